#pragma once

#include "kernel/StateSpace.h"

#include <tl/expected.hpp>

#include <functional>
#include <span>
#include <vector>

/// The kernel's procedures written down literally, as full passes over node and bond lists: slow,
/// easy to check by eye, and the judge of the fast ones. Linked into tests and benchmarks only.
namespace kelvo::reference {

/// Sequential causality assignment by repeated full passes.
tl::expected<BondGraph, GraphError> assignCausality(const BondGraph& graph);

/// A model whose evaluation relaxes the graph anew each time.
struct StateSpace {
    BondGraph graph;
    std::vector<StateVar> states;

    static tl::expected<StateSpace, GraphError> create(const BondGraph& graph);
    Eval derivatives(std::span<const double> state, const Sources& sources) const;
};

/// Runge–Kutta with six evaluations a step and nothing kept between them.
struct Integrator {
    StateSpace space;
    std::function<Sources(double)> sources;
    std::vector<double> state = std::vector<double>(space.states.size(), 0.0);
    double t = 0;
    double risk = 0;

    void step(double h);
};

} // namespace kelvo::reference
