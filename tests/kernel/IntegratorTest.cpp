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

TEST(Integrator, TakesUpAStateWrittenBetweenStepsAndHasCopiesOfItsOwn) {
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

    Integrator copy = run;
    copy.step(0.0);
    EXPECT_EQ(copy.state(), run.state());
    EXPECT_EQ(copy.risk(), run.risk());
    copy.step(0.01);
    EXPECT_NE(copy.state(), run.state());
    run.step(0.01);
    EXPECT_EQ(copy.state(), run.state());
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

TEST(Integrator, WithoutASourceFunctionIsNotDriven) {
    for (Integrator run : {Integrator(spaceOf(support::startupGraph()), SourceFunction()),
                           Integrator(spaceOf(support::startupGraph()), SourceMapFunction())}) {
        run.step(0.01);
        EXPECT_THAT(run.state(), ElementsAre(0.0, 0.0));
    }
}

} // namespace
} // namespace kelvo
