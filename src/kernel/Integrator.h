#pragma once

#include "kernel/StateSpace.h"

#include <functional>
#include <span>
#include <vector>

namespace kelvo {

/// Writes the source values at time `t`, one a source slot (`StateSpace::sourceSlot`). Every value
/// is 0.0 before the call.
using SourceFunction = std::function<void(double t, std::span<double> values)>;
/// The source values at time `t` by node id. Convenient, and slower: it builds a map a call.
using SourceMapFunction = std::function<Sources(double t)>;

/// Advances the state of a model with the classical fourth-order Runge–Kutta method at a fixed step
/// and accumulates the risk, ∫ dissipated dt, by the trapezoidal rule.
///
/// A value: copies integrate on independently. No step allocates.
class Integrator {
public:
    /// Starts at t = 0, risk = 0 and a state of zeros. A source function that is empty stands for
    /// sources that are all 0.
    Integrator(StateSpace space, SourceFunction sources);
    Integrator(const StateSpace& space, SourceMapFunction sources);

    const StateSpace& space() const { return space_; }

    /// The state vector, one entry a state variable, free to be overwritten between steps.
    /// Variables beyond its end count as 0; entries beyond the last variable stay as they are.
    std::vector<double>& state() { return state_; }
    const std::vector<double>& state() const { return state_; }

    double t() const { return t_; }
    void setT(double t) { t_ = t; }
    /// The accumulated dissipation ∫ R·f² dt.
    double risk() const { return risk_; }
    void setRisk(double risk) { risk_ = risk; }

    /// Advances state, time and risk by `dt`. The source function is called six times: twice at t,
    /// twice at t + dt/2, twice at t + dt. Values that are not finite pass through.
    void step(double dt);

    /// The power dissipated at the present state under the sources at the present time, with one
    /// call of the source function: `space().derivatives(state(), …).dissipated` to the last bit,
    /// without allocating.
    double dissipation();

private:
    bool readSources(double* slots, double t);
    bool readState(double* slots);
    void evaluate(double t);
    void clearMissing(double* slots) const;
    void commit(const double* slots);

    /// The slots of an evaluation. There are five: one for the state at the start of the step and
    /// the first stage, one for each other stage, one for the state at its end, which the next step
    /// starts from.
    double* slots(std::size_t which) { return slots_.data() + which * stride_; }

    StateSpace space_;
    SourceFunction sources_;
    std::vector<double> state_;
    double t_ = 0;
    double risk_ = 0;

    std::vector<double> values_; ///< what the source function wrote last
    std::vector<double> held_;   ///< the state that `slots(current_)` was given
    std::vector<double> slots_;
    std::size_t stride_ = 0;
    std::size_t current_ = 0;
    bool evaluated_ = false; ///< `slots(current_)` is a whole evaluation, and `rate_` its loss
    double rate_ = 0;
};

} // namespace kelvo
