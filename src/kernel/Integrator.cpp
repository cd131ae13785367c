#include "kernel/Integrator.h"

#include "kernel/StateSpaceModel.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

// The method and its names follow Hairer, Nørsett and Wanner, Solving Ordinary Differential
// Equations I, section II.1: y' = f(t, y), stage derivatives k1 … k4, step h. The state y is called
// x here. An evaluation is reused where state and sources are equal to the last bit, which leaves
// four of six when the sources hold still over the step.

namespace kelvo {

using kernel_detail::Index;
using kernel_detail::Program;

namespace {

/// A source function that asks for a map and looks up each id.
SourceFunction fromMap(const StateSpace& space, SourceMapFunction sources) {
    if (!sources) return {};
    return [ids = space.sourceIds(), sources = std::move(sources)](double t,
                                                                   std::span<double> values) {
        const Sources map = sources(t);
        for (std::size_t i = 0; i < ids.size(); ++i) {
            const auto found = map.find(ids[i]);
            if (found != map.end()) values[i] = found->second;
        }
    };
}

bool sameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool sameBits(const double* a, const double* b, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (!sameBits(a[i], b[i])) return false;
    }
    return true;
}

} // namespace

Integrator::Integrator(StateSpace space, SourceFunction sources)
    : space_(std::move(space)), sources_(std::move(sources)) {
    const Program& program = space_.model_->program;
    values_.resize(program.sourceCount);
    state_.resize(program.stateSlot.size());
    held_ = state_;
    stride_ = program.stepSlots + program.stepSlots % 2;
    slots_.resize(5 * stride_);
    for (std::size_t i = 0; i < 5; ++i)
        program.hoisted.play(slots(i));
}

Integrator::Integrator(const StateSpace& space, SourceMapFunction sources)
    : Integrator(space, fromMap(space, std::move(sources))) {
}

/// Asks for the sources at `t`. True when they differ from those that `slots` holds.
inline bool Integrator::readSources(double* slots, double t) {
    const std::size_t count = values_.size();
    double* values = values_.data();
    double* held = slots + Program::firstSource;
    if (count == 1) {
        *values = 0.0;
        if (sources_) sources_(t, {values, 1});
        if (sameBits(*held, *values)) return false;
        *held = *values;
    } else {
        std::fill_n(values, count, 0.0);
        if (sources_) sources_(t, {values, count});
        if (sameBits(held, values, count)) return false;
        std::copy_n(values, count, held);
    }
    space_.model_->program.hoisted.play(slots);
    return true;
}

/// Takes over the state vector. True when it differs from the state that was held.
bool Integrator::readState(double* slots) {
    const Program& program = space_.model_->program;
    const std::size_t n = held_.size();
    if (state_.size() >= n && sameBits(state_.data(), held_.data(), n)) return false;
    for (std::size_t k = 0; k < n; ++k) {
        held_[k] = k < state_.size() ? state_[k] : 0.0;
        slots[program.stateSlot[k]] = held_[k];
    }
    return true;
}

/// Makes `slots(current_)` the evaluation of the present state under the sources at `t`.
void Integrator::evaluate(double t) {
    const Program& program = space_.model_->program;
    double* now = slots(current_);
    const bool newSources = readSources(now, t);
    const bool newState = readState(now);
    if (evaluated_ && !newSources && !newState) return;
    program.derivative.play(now);
    program.rate.play(now);
    rate_ = program.dissipated(now);
    evaluated_ = true;
}

/// States that the state vector has no entry for are 0 at every stage.
void Integrator::clearMissing(double* slots) const {
    const Program& program = space_.model_->program;
    for (std::size_t k = state_.size(); k < held_.size(); ++k)
        slots[program.stateSlot[k]] = 0.0;
}

/// The state vector becomes the state that `slots` holds.
void Integrator::commit(const double* slots) {
    const Program& program = space_.model_->program;
    const Index* slotOf = program.stateSlot.data();
    const std::size_t n = std::min(held_.size(), state_.size());
    double* held = held_.data();
    double* state = state_.data();
    for (std::size_t k = 0; k < n; ++k) {
        const double x = slots[slotOf[k]];
        held[k] = x;
        state[k] = x;
    }
}

void Integrator::step(double dt) {
    const Program& program = space_.model_->program;
    const double h = dt;
    const double half = h * 0.5;
    const double middle = half + t_;
    const double end = t_ + h;
    const bool missing = state_.size() < held_.size();
    double* const first = slots(current_);
    double* const last = slots(4 - current_);
    const double* const x = first + program.firstState;

    evaluate(t_);
    const double rateAtStart = rate_;
    evaluated_ = false;
    if (readSources(first, t_)) program.derivative.play(first);

    const auto runStage = [&](const double* from, double* to, double ahead, double time) {
        program.dx.advance(x, from, ahead, to + program.firstState);
        if (missing) clearMissing(to);
        readSources(to, time);
        program.derivative.play(to);
    };
    runStage(first, slots(1), half, middle);
    runStage(slots(1), slots(2), half, middle);
    runStage(slots(2), slots(3), h, end);

    program.dx.finish(x, {first, slots(1), slots(2), slots(3)}, h / 6, last + program.firstState);
    if (missing) clearMissing(last);
    readSources(last, end);
    program.derivative.play(last);
    program.rate.play(last);

    rate_ = program.dissipated(last);
    risk_ += h * (rateAtStart + rate_) * 0.5;
    t_ = end;
    commit(last);
    current_ = 4 - current_;
    evaluated_ = true;
}

double Integrator::dissipation() {
    evaluate(t_);
    return rate_;
}

} // namespace kelvo
