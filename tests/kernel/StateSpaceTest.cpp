#include "kernel/StateSpace.h"

#include "support/FamilyGraphs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <vector>

namespace kelvo {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

StateSpace spaceOf(const ExtractedGraph& graph) {
    return StateSpace::create(graph.validated().value()).value();
}

TEST(StateSpace, OfTheStartUpGraphHasMomentumThenCharge) {
    const StateSpace space = spaceOf(support::startupGraph());
    EXPECT_THAT(space.states(), ElementsAre(StateVar{3, "I", StateKind::momentum, 0.5, 2},
                                            StateVar{4, "C", StateKind::charge, 1.0, 3}));
    EXPECT_THAT(space.sourceIds(), ElementsAre("Se"));
    EXPECT_EQ(space.sourceSlot("Se"), 0U);
    EXPECT_EQ(space.sourceSlot("R"), std::nullopt);
}

TEST(StateSpace, WorksOutEveryVariableOfTheStartUpGraph) {
    const StateSpace space = spaceOf(support::startupGraph());
    const Eval eval = space.derivatives(std::vector{0.3, 0.2}, {{"Se", 1.0}});
    const auto near = [](const std::vector<double>& expected) {
        return Pointwise(DoubleNear(1e-15), expected);
    };
    EXPECT_THAT(eval.flow, near({0.6, 0.6, 0.6, 0.6}));
    EXPECT_THAT(eval.effort, near({1.0, 1.2, -0.4, 0.2}));
    EXPECT_THAT(eval.dx, near({-0.4, 0.6}));
    EXPECT_THAT(eval.sourcePower, DoubleNear(0.6, 1e-15));
    EXPECT_THAT(eval.storedRate, DoubleNear(-0.12, 1e-15));
    EXPECT_THAT(eval.dissipated, DoubleNear(0.72, 1e-15));

    const Eval atRest = space.derivatives({}, {{"Se", 1.0}});
    EXPECT_THAT(atRest.dx, ElementsAre(1.0, 0.0));
    EXPECT_EQ(atRest.sourcePower, 0);
    EXPECT_EQ(atRest.storedRate, 0);
    EXPECT_EQ(atRest.dissipated, 0);
}

TEST(StateSpace, GivesTheSeedToTheNodeThatComesFirst) {
    const StateSpace sourceFirst = spaceOf({{{"s", "Se"}, {"c", "C", 2.0}}, {{"s", "c"}}});
    const Eval driven = sourceFirst.derivatives(std::vector{0.5}, {{"s", 3.0}});
    EXPECT_THAT(driven.effort, ElementsAre(3.0));
    EXPECT_THAT(driven.dx, ElementsAre(0.0));

    const StateSpace storeFirst = spaceOf({{{"c", "C", 2.0}, {"s", "Se"}}, {{"s", "c"}}});
    EXPECT_THAT(storeFirst.derivatives(std::vector{0.5}, {{"s", 3.0}}).effort, ElementsAre(0.25));
}

TEST(StateSpace, LeavesWhatNothingDeterminesAtZero) {
    const StateSpace space =
        spaceOf({{{"a", "C", 2.0}, {"j", "j0"}, {"b", "C", 4.0}}, {{"a", "j"}, {"j", "b"}}});
    const Eval eval = space.derivatives(std::vector{1.0, 1.0}, {});
    EXPECT_THAT(eval.effort, ElementsAre(0.5, 0.25));
    EXPECT_THAT(eval.flow, ElementsAre(0.0, 0.0));
    EXPECT_THAT(eval.dx, ElementsAre(0.0, 0.0));
}

TEST(StateSpace, ScalesByModulusFromTheHigherPortToTheLower) {
    const auto space = [](const char* kind) {
        return spaceOf(
            {{{"s", "Sf"}, {"x", kind, 4.0}, {"r", "R", 0.5}}, {{"s", "x"}, {"x", "r"}}});
    };
    const Eval transformer = space("TF").derivatives({}, {{"s", 3.0}});
    EXPECT_THAT(transformer.flow, ElementsAre(3.0, 12.0));
    EXPECT_THAT(transformer.effort, ElementsAre(24.0, 6.0));
    const Eval gyrator = space("GY").derivatives({}, {{"s", 3.0}});
    EXPECT_THAT(gyrator.flow, ElementsAre(3.0, 24.0));
    EXPECT_THAT(gyrator.effort, ElementsAre(96.0, 12.0));
}

TEST(StateSpace, TakesMissingParametersAsOneAndMissingSourcesAsZero) {
    const BondGraph graph{{{"s", NodeKind::Se}, {"r", NodeKind::R}}, {{0, 1}}};
    const StateSpace space = StateSpace::create(graph).value();
    EXPECT_TRUE(space.states().empty());
    EXPECT_EQ(space.derivatives({}, {{"s", 3.0}}).dissipated, 9.0);
    EXPECT_EQ(space.derivatives({}, {{"r", 3.0}}).dissipated, 0.0);
}

TEST(StateSpace, DrivesSourcesOfTheSameIdAlike) {
    const BondGraph graph{{{"s", NodeKind::Se},
                           {"r", NodeKind::R, 2.0},
                           {"s", NodeKind::Sf},
                           {"r", NodeKind::R, 2.0}},
                          {{0, 1}, {2, 3}}};
    const Eval eval = StateSpace::create(graph).value().derivatives({}, {{"s", 3.0}});
    EXPECT_THAT(eval.effort, ElementsAre(3.0, 6.0));
    EXPECT_THAT(eval.flow, ElementsAre(1.5, 3.0));
}

TEST(StateSpace, PassesValuesThatAreNotFiniteThrough) {
    const StateSpace space = spaceOf({{{"s", "Se"}, {"r", "R", 0.0}}, {{"s", "r"}}});
    EXPECT_EQ(space.derivatives({}, {{"s", 1.0}}).flow[0], INFINITY);
    EXPECT_TRUE(std::isnan(space.derivatives({}, {{"s", 0.0}}).flow[0]));
}

TEST(StateSpace, StoresHalfTheSquareOverTheParameter) {
    const StateSpace one = spaceOf({{{"c", "C", 4.0}, {"r", "R", 1.0}}, {{"c", "r"}}});
    EXPECT_EQ(one.storedEnergy(std::vector{2.0}), 0.5);
    EXPECT_EQ(one.storedEnergy(std::vector{2.0, 9.0}), 0.5);
    EXPECT_EQ(one.storedEnergy({}), 0.0);
    EXPECT_EQ(spaceOf(support::startupGraph()).storedEnergy(std::vector{1.0, 3.0}), 1.0 + 4.5);
}

TEST(StateSpace, BalancesPowerWhereEveryVariableResolves) {
    const StateSpace space = spaceOf(support::familiesComposed(9));
    std::vector<double> state(space.states().size());
    for (std::size_t k = 0; k < state.size(); ++k)
        state[k] = 0.25 + std::sin(double(k));
    const Eval eval = space.derivatives(state, {{"owner", 1.5}});
    EXPECT_NEAR(eval.sourcePower, eval.storedRate + eval.dissipated, 1e-12);
    EXPECT_GT(eval.dissipated, 1.0);
}

TEST(StateSpace, FailsAsCausalityFails) {
    const BondGraph graph{{{"s", NodeKind::Se}}, {}};
    EXPECT_EQ(StateSpace::create(graph).error(), GraphError::arity("s", 1, 0));
}

TEST(StateSpace, OfAnEmptyGraphIsEmpty) {
    const StateSpace space = StateSpace::create({}).value();
    const Eval eval = space.derivatives({}, {{"x", 1.0}});
    EXPECT_TRUE(eval.dx.empty() && eval.effort.empty() && eval.flow.empty());
    EXPECT_EQ(eval.sourcePower + eval.storedRate + eval.dissipated, 0.0);
}

} // namespace
} // namespace kelvo
