#include "kernel/Integrator.h"

#include "kernel/Literal.h"

namespace kelvo {

Integrator::Integrator(StateSpace space, SourceFunction sources)
    : space_(std::move(space)), sources_(std::move(sources)), state_(space_.states().size(), 0.0) {
}

Integrator::Integrator(StateSpace space, SourceMapFunction sources)
    : Integrator(space, SourceFunction([ids = space.sourceIds(), sources = std::move(sources)](
                                           double t, std::span<double> values) {
                     if (!sources) return;
                     const Sources at = sources(t);
                     for (std::size_t i = 0; i < ids.size(); ++i) {
                         const auto found = at.find(ids[i]);
                         if (found != at.end()) values[i] = found->second;
                     }
                 })) {
}

namespace {
Sources mapOf(const StateSpace& space, const SourceFunction& sources, double t) {
    std::vector<double> values(space.sourceIds().size(), 0.0);
    if (sources) sources(t, values);
    Sources map;
    for (std::size_t i = 0; i < values.size(); ++i)
        map[space.sourceIds()[i]] = values[i];
    return map;
}
} // namespace

void Integrator::step(double dt) {
    auto literal = reference::StateSpace::create(space_.graph());
    reference::Integrator run{*literal, [&](double t) { return mapOf(space_, sources_, t); }};
    const std::size_t n = state_.size();
    run.state = state_;
    run.state.resize(space_.states().size(), 0.0);
    run.t = t_;
    run.risk = risk_;
    run.step(dt);
    std::copy_n(run.state.begin(), std::min(n, run.state.size()), state_.begin());
    t_ = run.t;
    risk_ = run.risk;
}

double Integrator::dissipation() {
    return space_.derivatives(state_, mapOf(space_, sources_, t_)).dissipated;
}

} // namespace kelvo
