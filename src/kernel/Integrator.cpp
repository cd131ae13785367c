#include "kernel/Integrator.h"

#include "kernel/StateSpaceModel.h"

#include <algorithm>
#include <cstring>
#include <utility>

// The method and its names follow Hairer, Nørsett and Wanner, Solving Ordinary Differential
// Equations I, section II.1: y' = f(t, y), stage derivatives k1 … k4, step h. The state y is called
// x here. An evaluation is reused where state and sources are equal to the last bit, which leaves
// four of six when the sources hold still over the step.

namespace kelvo {

using kernel_detail::Program;
using kernel_detail::SignedSlot;

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

} // namespace

Integrator::Integrator(StateSpace space, SourceFunction sources)
    : space_(std::move(space)), sources_(std::move(sources)) {
    const Program& program = space_.model_->program;
    const std::size_t n = program.variableAt.size();
    values_.resize(program.sourceCount);
    for (std::vector<double>* each : {&state_, &x_, &k1_, &k2_, &k3_})
        each->resize(n);
    for (Slots* each : {&even_, &odd_}) {
        each->resize(program.stepSlots);
        program.hoisted.play(each->data());
    }
}

Integrator::Integrator(StateSpace space, SourceMapFunction sources)
    : Integrator(space, fromMap(space, std::move(sources))) {
}

/// Asks for the sources at `t`. True when they differ from those that `slots` holds.
bool Integrator::readSources(Slots& slots, double t) {
    std::ranges::fill(values_, 0.0);
    if (sources_) sources_(t, values_);
    double* held = slots.data() + Program::firstSource;
    const std::size_t size = values_.size() * sizeof(double);
    if (size == 0 || std::memcmp(held, values_.data(), size) == 0) return false;
    std::memcpy(held, values_.data(), size);
    space_.model_->program.hoisted.play(slots.data());
    return true;
}

/// Takes over the state vector. True when it differs from the state that `slots` holds.
bool Integrator::readState(Slots& slots) {
    const Program& program = space_.model_->program;
    double* held = slots.data() + program.firstState;
    for (std::size_t i = 0; i < x_.size(); ++i) {
        const std::size_t k = program.variableAt[i];
        x_[i] = k < state_.size() ? state_[k] : 0.0;
    }
    const std::size_t size = x_.size() * sizeof(double);
    if (size == 0 || std::memcmp(held, x_.data(), size) == 0) return false;
    std::memcpy(held, x_.data(), size);
    return true;
}

/// Makes `even_` the evaluation of the present state under the sources at `t`.
void Integrator::evaluate(double t) {
    const Program& program = space_.model_->program;
    const bool newSources = readSources(even_, t);
    const bool newState = readState(even_);
    if (evaluated_ && !newSources && !newState) return;
    program.derivative.play(even_.data());
    program.rate.play(even_.data());
    rate_ = program.dissipated(even_.data());
    evaluated_ = true;
}

void Integrator::derive(Slots& slots) {
    space_.model_->program.derivative.play(slots.data());
}

/// k = dx of the evaluation `from`; the state of `to` becomes x + h·k.
void Integrator::advance(const Slots& from, Slots& to, std::vector<double>& k, double h) {
    const Program& program = space_.model_->program;
    const std::size_t n = x_.size();
    const double* slots = from.data();
    const SignedSlot* dx = program.dx.data();
    const double* x = x_.data();
    double* __restrict stage = k.data();
    double* __restrict next = to.data() + program.firstState;
    for (std::size_t i = 0; i < n; ++i) {
        stage[i] = slots[dx[i].slot] * dx[i].sign;
        next[i] = x[i] + h * stage[i];
    }
    if (state_.size() < n) clearMissing(to);
}

/// The state vector becomes x + (h/6)·(k4 + k1 + k2 + k2 + k3 + k3), where k4 is dx of `from`.
void Integrator::finish(const Slots& from, double h) {
    const Program& program = space_.model_->program;
    const double sixth = h / 6;
    for (std::size_t i = 0; i < x_.size(); ++i) {
        const std::size_t k = program.variableAt[i];
        if (k >= state_.size()) continue;
        const double k4 = from[program.dx[i].slot] * program.dx[i].sign;
        state_[k] = x_[i] + sixth * (k4 + k1_[i] + k2_[i] + k2_[i] + k3_[i] + k3_[i]);
    }
}

void Integrator::clearMissing(Slots& slots) const {
    const Program& program = space_.model_->program;
    for (std::size_t i = 0; i < x_.size(); ++i) {
        if (program.variableAt[i] >= state_.size()) slots[program.firstState + i] = 0.0;
    }
}

void Integrator::step(double dt) {
    const double h = dt;
    const double half = h * 0.5;
    const double middle = half + t_;
    const double end = t_ + h;

    evaluate(t_);
    const double rateAtStart = rate_;
    evaluated_ = false;
    if (readSources(even_, t_)) derive(even_);
    advance(even_, odd_, k1_, half);
    readSources(odd_, middle);
    derive(odd_);
    advance(odd_, even_, k2_, half);
    readSources(even_, middle);
    derive(even_);
    advance(even_, odd_, k3_, h);
    readSources(odd_, end);
    derive(odd_);
    finish(odd_, h);

    t_ = end;
    evaluate(t_);
    risk_ += h * (rateAtStart + rate_) * 0.5;
}

double Integrator::dissipation() {
    evaluate(t_);
    return rate_;
}

} // namespace kelvo
