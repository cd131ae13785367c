// Measures the kernel against baselines in the same run and prints one table. Repetitions of all
// benchmarks are interleaved at random, so that a slow stretch of the machine touches all alike,
// and the fastest of each counts.

#include "kernel/Extraction.h"
#include "kernel/Integrator.h"
#include "support/FamilyGraphs.h"
#include "support/KernelReference.h"

#include <benchmark/benchmark.h>
#include <boost/numeric/odeint/stepper/runge_kutta4.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Handwritten.h"
#include "Table.h"

namespace kelvo::bench {
namespace {

constexpr double dt = 0.01;
/// Steps from rest before a model starts afresh: long before anything decays into subnormal
/// numbers.
constexpr int stepsAtOnce = 1000;

double drive = 1.0;

StateSpace spaceOf(const ExtractedGraph& graph) {
    return StateSpace::create(graph.validated().value()).value();
}

/// odeint's four evaluations, and the two of the dissipation rate at both ends of the step.
template <class Graph>
struct OdeintRun {
    OdeintRun() = default;
    /// Copies what a run is, not the method's scratch space, which may hold nothing yet.
    OdeintRun(const OdeintRun& other) : state(other.state), t(other.t), risk(other.risk) {}
    OdeintRun& operator=(const OdeintRun&) = delete;

    std::array<double, Graph::size> state{};
    double t = 0;
    double risk = 0;
    boost::numeric::odeint::runge_kutta4<std::array<double, Graph::size>> method{};

    void step(double h) {
        std::array<double, Graph::size> unused;
        const double d0 = Graph::evaluate(state.data(), drive, unused.data());
        method.do_step(
            [](const auto& x, auto& dx, double) { Graph::evaluate(x.data(), drive, dx.data()); },
            state, t, h);
        t += h;
        risk += h * (d0 + Graph::evaluate(state.data(), drive, unused.data())) * 0.5;
    }
};

Integrator publicRun(const ExtractedGraph& graph) {
    return {spaceOf(graph),
            SourceFunction([](double, std::span<double> values) { values[0] = drive; })};
}

Integrator publicMapRun(const ExtractedGraph& graph) {
    const std::string id = graph.nodes.front().id;
    return {spaceOf(graph), SourceMapFunction([id](double) { return Sources{{id, drive}}; })};
}

reference::Integrator literalRun(const ExtractedGraph& graph) {
    const std::string id = graph.nodes.front().id;
    return {reference::StateSpace::create(graph.validated().value()).value(), [id](double) {
                return Sources{{id, drive}};
            }};
}

std::vector<double>& stateOf(Integrator& run) {
    return run.state();
}
template <class Run>
auto& stateOf(Run& run) {
    return run.state;
}

/// Registers a benchmark of `steps` steps from rest.
template <class Run>
void addSteps(const std::string& name, const Run& atRest, int steps) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& bench) {
        Run run = atRest;
        for (auto _ : bench) {
            std::ranges::fill(stateOf(run), 0.0);
            for (int i = 0; i < steps; ++i)
                run.step(dt);
            benchmark::DoNotOptimize(stateOf(run).data());
            benchmark::ClobberMemory();
        }
        bench.counters["units"] = steps;
    });
}

/// Ends the program unless a run computes what the public integrator does.
template <class Run>
void check(const std::string& name, const ExtractedGraph& graph, Run run) {
    Integrator expected = publicRun(graph);
    for (int i = 0; i < 100; ++i) {
        expected.step(dt);
        run.step(dt);
    }
    const auto close = [](double a, double b) { return std::abs(a - b) <= 1e-13; };
    if (std::ranges::equal(expected.state(), stateOf(run), close)) return;
    std::fprintf(stderr, "bench_kernel: %s computes something else\n", name.c_str());
    std::exit(1);
}

/// One graph with every way to step it.
template <class Graph, class Whole>
struct Contest {
    std::string name;
    ExtractedGraph graph;

    std::string key(const char* way) const { return std::string(way).append(", ").append(name); }

    template <class Run>
    void add(const char* way, const Run& run, int steps = stepsAtOnce) const {
        check(key(way), graph, run);
        addSteps(key(way), run, steps);
    }

    void addAll() const {
        add("public", publicRun(graph));
        add("map", publicMapRun(graph));
        add("handwritten", handwritten::Integrator<Graph>{.drive = &drive});
        add("whole", handwritten::Integrator<Whole>{.drive = &drive});
        add("inlined", handwritten::InlinedIntegrator<Graph>{.drive = &drive});
        add("odeint", OdeintRun<Graph>{});
        add("literal", literalRun(graph), 5);
    }

    void print(const Collector& results) const {
        std::printf("\nOne step, %s (%zu nodes)\n", name.c_str(), graph.nodes.size());
        std::printf("  %-52s %10s %16s %12s\n", "", "time", "to hand-written", "to Kelvo");
        const double hand = results.fastest(key("handwritten"));
        const double own = results.fastest(key("public"));
        const auto row = [&](const char* what, const char* way) {
            const double time = results.fastest(key(way));
            std::printf("  %-52s %10s %16.2f %12.2f\n", what, duration(time).c_str(), time / hand,
                        time / own);
        };
        row("Kelvo, sources in slots", "public");
        row("Kelvo, sources in a map", "map");
        row("hand-written, six evaluations of what a step needs", "handwritten");
        row("hand-written, six evaluations in full", "whole");
        row("hand-written, evaluations inlined and merged", "inlined");
        row("Boost.odeint on the hand-written evaluation", "odeint");
        row("literal relaxation at each evaluation", "literal");
    }
};

const Contest<handwritten::Startup, handwritten::StartupWhole> startup{"start-up graph",
                                                                       support::startupGraph()};
const Contest<handwritten::NineFamilies, handwritten::NineFamiliesWhole> nine{
    "nine families", support::familiesComposed(9)};

/// Families composed, in sizes up to 10,002 nodes.
constexpr std::array<std::size_t, 7> familyCounts{20, 50, 100, 200, 500, 1000, 2000};

std::string named(const char* what, std::size_t count) {
    return std::string(what).append(", families: ").append(std::to_string(count));
}

void addGrowth() {
    for (const std::size_t count : familyCounts) {
        const BondGraph graph = support::familiesComposed(count).validated().value();
        benchmark::RegisterBenchmark(named("construct", count).c_str(),
                                     [=](benchmark::State& bench) {
                                         for (auto _ : bench) {
                                             auto space = StateSpace::create(graph);
                                             benchmark::DoNotOptimize(space);
                                         }
                                     });
        const int steps = static_cast<int>(20'000 / count);
        addSteps(named("step", count), publicRun(support::familiesComposed(count)), steps);
    }
}

void printGrowth(const Collector& results) {
    std::vector<double> sizes;
    std::vector<double> construct;
    std::vector<double> step;
    std::printf("\nGrowth, families composed\n  %10s %28s %12s\n", "nodes",
                "validate, strokes, compile", "one step");
    for (const std::size_t count : familyCounts) {
        sizes.push_back(static_cast<double>(2 + 5 * count));
        construct.push_back(results.fastest(named("construct", count)));
        step.push_back(results.fastest(named("step", count)));
        std::printf("  %10.0f %27s  %11s\n", sizes.back(), duration(construct.back()).c_str(),
                    duration(step.back()).c_str());
    }
    std::printf("  %10s %27.2f  %11.2f\n", "exponent", growthExponent(sizes, construct),
                growthExponent(sizes, step));
}

void addAll() {
    startup.addAll();
    nine.addAll();
    addGrowth();
}

void print(const Collector& results) {
    startup.print(results);
    nine.print(results);
    printGrowth(results);
}

} // namespace
} // namespace kelvo::bench

int main(int argc, char** argv) {
    using namespace kelvo::bench;
    return measure(argc, argv, addAll, print);
}
