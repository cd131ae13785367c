#pragma once

#include <array>
#include <cstddef>

/// What a person would write for one fixed graph: straight-line code with the parameters as
/// constants, the source read from memory at each evaluation. The baseline of the step's time.
namespace kelvo::handwritten {

/// What a step needs of the start-up graph; the state is (momentum of I, charge of C).
struct Startup {
    static constexpr std::size_t size = 2;
    /// Writes the derivative of `x` under the effort `drive` and returns the dissipation. Never
    /// inlined, so that a step makes each of its evaluations.
    static double evaluate(const double* x, double drive, double* dx);
};

/// What a step needs of the nine families composed; the state is (momentum, charge) of each family
/// in turn.
struct NineFamilies {
    static constexpr std::size_t size = 18;
    static double evaluate(const double* x, double drive, double* dx);
};

/// The same graphs with the evaluation carried out in full, as `StateSpace::derivatives` reports
/// it: the effort and flow of every bond and the three power totals, written to memory.
struct StartupWhole {
    static constexpr std::size_t size = 2;
    static double evaluate(const double* x, double drive, double* dx);
};
struct NineFamiliesWhole {
    static constexpr std::size_t size = 18;
    static double evaluate(const double* x, double drive, double* dx);
};

/// One Runge–Kutta step with the six evaluations of the public integrator.
template <class Graph>
struct Integrator {
    const double* drive;
    std::array<double, Graph::size> state{};
    double t = 0;
    double risk = 0;

    void step(double h);
};

/// The same step with the evaluations open to the compiler, which may merge equal ones and keep
/// values in registers across them.
template <class Graph>
struct InlinedIntegrator {
    const double* drive;
    std::array<double, Graph::size> state{};
    double t = 0;
    double risk = 0;

    void step(double h);
};

extern template struct Integrator<Startup>;
extern template struct Integrator<NineFamilies>;
extern template struct Integrator<StartupWhole>;
extern template struct Integrator<NineFamiliesWhole>;
extern template struct InlinedIntegrator<Startup>;
extern template struct InlinedIntegrator<NineFamilies>;

} // namespace kelvo::handwritten
