#pragma once

#include "kernel/Integrator.h"
#include "support/KernelReference.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The compiled kernel against the literal procedures: same error, same strokes, same numbers to
/// the last bit. Of a result that is not a number neither sign nor payload is fixed.
namespace kelvo::support {

inline bool same(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

inline bool same(const std::vector<double>& a, const std::vector<double>& b) {
    return std::ranges::equal(a, b, [](double x, double y) { return same(x, y); });
}

inline bool same(const Eval& a, const Eval& b) {
    return same(a.effort, b.effort) && same(a.flow, b.flow) && same(a.dx, b.dx) &&
           same(a.sourcePower, b.sourcePower) && same(a.storedRate, b.storedRate) &&
           same(a.dissipated, b.dissipated);
}

/// By fields: a parameter that is not a number is not equal to itself.
inline bool same(const StateVar& a, const StateVar& b) {
    return a.nodeIdx == b.nodeIdx && a.nodeID == b.nodeID && a.kind == b.kind && a.bond == b.bond &&
           same(a.param, b.param);
}

/// Sources that hold still at first, then change at a single call now and then, and in the end move
/// with the time and from call to call: each value must reach its own evaluation and no other.
inline SourceMapFunction movingSources(const Sources& base) {
    return [base, call = 0](double t) mutable {
        ++call;
        const double spike = call % 5 == 0 ? 1.0 : 0.0;
        const double added = t < 0.015 ? 0.0 : t < 0.035 ? spike : t * call;
        Sources moved = base;
        for (auto& [id, value] : moved)
            value += added;
        return moved;
    };
}

/// What first tells the two kernels apart on `graph`, driven and started at what `number` gives, in
/// steps of `h`.
template <class Number>
std::optional<std::string> difference(const BondGraph& graph, Number number, double h) {
    const auto fast = graph.assignCausality();
    const auto slow = reference::assignCausality(graph);
    const auto space = StateSpace::create(graph);
    if (fast.has_value() != slow.has_value() || space.has_value() != slow.has_value())
        return "whether it is causal";
    if (!fast) {
        const bool told = fast.error() == slow.error() && space.error() == slow.error();
        return told ? std::nullopt : std::optional<std::string>("the error");
    }
    if (fast->bonds != slow->bonds || space->graph().bonds != slow->bonds) return "the strokes";
    const auto literal = reference::StateSpace::create(graph).value();
    if (!std::ranges::equal(space->states(), literal.states,
                            [](const auto& a, const auto& b) { return same(a, b); }))
        return "the states";

    Sources sources{{"nobody", 5.0}};
    std::size_t every = 0;
    for (const std::string& id : space->sourceIds()) {
        if (++every % 5 != 0) sources[id] = number();
    }
    std::vector<double> state(space->states().size());
    for (double& x : state)
        x = number();
    for (const std::size_t length : {state.size(), state.size() / 2}) {
        const std::vector<double> known(state.begin(),
                                        state.begin() + static_cast<std::ptrdiff_t>(length));
        if (!same(space->derivatives(known, sources), literal.derivatives(known, sources)))
            return "the variables of " + std::to_string(length) + " states";
    }
    Integrator run(*space, movingSources(sources));
    reference::Integrator expected{literal, movingSources(sources)};
    run.state() = state;
    expected.state = state;
    for (int i = 0; i < 5; ++i) {
        run.step(h);
        expected.step(h);
        const double rate =
            literal.derivatives(expected.state, expected.sources(expected.t)).dissipated;
        if (!same(run.state(), expected.state) || !same(run.risk(), expected.risk) ||
            !same(run.t(), expected.t) || !same(run.dissipation(), rate))
            return "step " + std::to_string(i);
    }
    return std::nullopt;
}

} // namespace kelvo::support
