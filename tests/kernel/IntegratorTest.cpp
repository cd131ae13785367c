#include "kernel/Integrator.h"

#include "support/FamilyGraphs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace kelvo {
namespace {

using testing::ElementsAre;

StateSpace spaceOf(const ExtractedGraph& graph) {
    return StateSpace::create(graph.validated().value()).value();
}

Integrator driven(const ExtractedGraph& graph, double drive) {
    return {spaceOf(graph), [drive](double, std::span<double> values) { values[0] = drive; }};
}

TEST(Integrator, ReachesTheKnownDigitsOfTheStartUpGraph) {
    struct Row {
        int steps;
        double momentum, charge, risk;
    };
    Integrator run = driven(support::startupGraph(), 1.0);
    int done = 0;
    for (const Row& row :
         {Row{1, 0.00980231, 9.86783e-05, 3.84341e-06}, Row{10, 0.0821463, 0.00877577, 0.00199651},
          Row{100, 0.185179, 0.334857, 0.244499}}) {
        for (; done < row.steps; ++done)
            run.step(0.01);
        EXPECT_NEAR(run.state()[0] / row.momentum, 1, 5e-6) << row.steps;
        EXPECT_NEAR(run.state()[1] / row.charge, 1, 5e-6) << row.steps;
        EXPECT_NEAR(run.risk() / row.risk, 1, 5e-6) << row.steps;
        EXPECT_NEAR(run.t(), 0.01 * row.steps, 1e-12);
    }
}

TEST(Integrator, HalvesItsStepForASixteenthOfTheError) {
    // The start-up graph at drive 1 is p'' + 4p' + 2p = 0, p(0) = 0, p'(0) = 1.
    const double root = std::sqrt(2.0);
    const double exact = std::exp(-2.0) * std::sinh(root) / root;
    const auto error = [&](int steps) {
        Integrator run = driven(support::startupGraph(), 1.0);
        for (int i = 0; i < steps; ++i)
            run.step(1.0 / steps);
        return std::abs(run.state()[0] - exact);
    };
    EXPECT_NEAR(error(80) / error(160), 16, 0.5);
    EXPECT_LT(error(160), 1e-9);
}

TEST(Integrator, AsksForTheSourcesSixTimesAStep) {
    std::vector<double> asked;
    Integrator run(spaceOf(support::startupGraph()),
                   [&](double t, std::span<double>) { asked.push_back(t); });
    run.setT(2.0);
    run.step(0.5);
    EXPECT_THAT(asked, ElementsAre(2.0, 2.0, 2.25, 2.25, 2.5, 2.5));
    asked.clear();
    run.dissipation();
    EXPECT_THAT(asked, ElementsAre(2.5));
}

TEST(Integrator, ReadsAChangedSourceAtTheNextEvaluation) {
    // Six calls with six values: each one must reach its own evaluation and no other.
    for (int changed = 0; changed < 6; ++changed) {
        int call = 0;
        const auto sources = [&](double) { return Sources{{"Se", call++ == changed ? 2.0 : 1.0}}; };
        Integrator run(spaceOf(support::startupGraph()), sources);
        run.state() = {0.1, 0.2};
        run.step(0.01);

        const auto eval = [&](int at, double p, double q) {
            const double drive = at == changed ? 2.0 : 1.0;
            return run.space().derivatives(std::vector{p, q}, {{"Se", drive}});
        };
        const double h = 0.01;
        const double d0 = eval(0, 0.1, 0.2).dissipated;
        const auto k1 = eval(1, 0.1, 0.2).dx;
        const auto k2 = eval(2, 0.1 + h / 2 * k1[0], 0.2 + h / 2 * k1[1]).dx;
        const auto k3 = eval(3, 0.1 + h / 2 * k2[0], 0.2 + h / 2 * k2[1]).dx;
        const auto k4 = eval(4, 0.1 + h * k3[0], 0.2 + h * k3[1]).dx;
        const double p = 0.1 + h / 6 * (k1[0] + 2 * k2[0] + 2 * k3[0] + k4[0]);
        const double q = 0.2 + h / 6 * (k1[1] + 2 * k2[1] + 2 * k3[1] + k4[1]);
        const double d1 = eval(5, p, q).dissipated;
        EXPECT_NEAR(run.state()[0], p, 1e-15) << changed;
        EXPECT_NEAR(run.state()[1], q, 1e-15) << changed;
        EXPECT_NEAR(run.risk(), h * (d0 + d1) / 2, 1e-15) << changed;
    }
}

TEST(Integrator, AccumulatesRiskWithoutAnyState) {
    Integrator run = driven({{{"s", "Se"}, {"r", "R", 2.0}}, {{"s", "r"}}}, 1.0);
    run.step(0.01);
    run.step(0.01);
    EXPECT_TRUE(run.state().empty());
    EXPECT_DOUBLE_EQ(run.risk(), 0.01);
}

TEST(Integrator, StandsStillAtAStepOfZero) {
    Integrator run = driven(support::startupGraph(), 1.0);
    run.step(0.01);
    const std::vector<double> before = run.state();
    const double risk = run.risk();
    run.step(0.0);
    EXPECT_EQ(run.state(), before);
    EXPECT_EQ(run.risk(), risk);
    EXPECT_EQ(run.t(), 0.01);
}

TEST(Integrator, TakesUpAStateWrittenBetweenSteps) {
    Integrator run = driven(support::startupGraph(), 1.0);
    Integrator fresh = driven(support::startupGraph(), 1.0);
    run.step(0.01);
    run.state().assign({0.5, -0.25});
    fresh.state().assign({0.5, -0.25});
    run.setT(0);
    run.setRisk(0);
    EXPECT_EQ(run.dissipation(), fresh.dissipation());
    run.step(0.01);
    fresh.step(0.01);
    EXPECT_EQ(run.state(), fresh.state());
    EXPECT_EQ(run.risk(), fresh.risk());
}

TEST(Integrator, CountsMissingStatesAsZeroAndLeavesFurtherOnesAlone) {
    Integrator longer = driven(support::startupGraph(), 1.0);
    Integrator exact = driven(support::startupGraph(), 1.0);
    longer.state() = {0.5, 0.25, 7.0};
    exact.state() = {0.5, 0.25};
    longer.step(0.01);
    exact.step(0.01);
    EXPECT_THAT(longer.state(), ElementsAre(exact.state()[0], exact.state()[1], 7.0));

    // Without its charge the graph is a driven I–R: p' = 1 - 4p.
    Integrator shorter = driven(support::startupGraph(), 1.0);
    shorter.state() = {0.5};
    for (int i = 0; i < 100; ++i)
        shorter.step(0.01);
    EXPECT_EQ(shorter.state().size(), 1U);
    EXPECT_NEAR(shorter.state()[0], 0.25 + 0.25 * std::exp(-4.0), 1e-8);
    shorter.state().clear();
    shorter.step(0.01);
    EXPECT_TRUE(shorter.state().empty());
}

TEST(Integrator, HasCopiesOfItsOwn) {
    Integrator first = driven(support::startupGraph(), 1.0);
    first.step(0.01);
    Integrator second = first;
    first.step(0.01);
    second.step(0.01);
    EXPECT_EQ(first.state(), second.state());
    second.step(0.01);
    EXPECT_NE(first.state(), second.state());
}

TEST(Integrator, WithoutASourceFunctionIsNotDriven) {
    for (Integrator run : {Integrator(spaceOf(support::startupGraph()), SourceFunction()),
                           Integrator(spaceOf(support::startupGraph()), SourceMapFunction())}) {
        run.step(0.01);
        EXPECT_THAT(run.state(), ElementsAre(0.0, 0.0));
    }
}

} // namespace
} // namespace kelvo
