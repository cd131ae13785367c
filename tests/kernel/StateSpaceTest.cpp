#include "kernel/StateSpace.h"

#include "support/FamilyGraphs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
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

TEST(StateSpace, FollowsTheGraphThroughEachElement) {
    using enum NodeKind;
    const std::tuple<const char*, BondGraph, std::vector<double>, std::vector<double>,
                     std::vector<double>>
        table[] = {
            {"the seed of the node that comes first: a source",
             {{{"s", Se}, {"c", C, 2.0}}, {{0, 1}}},
             {0.5},
             {3.0},
             {0.0}},
            {"a store", {{{"c", C, 2.0}, {"s", Se}}, {{1, 0}}}, {0.5}, {0.25}, {0.0}},
            {"what nothing determines stays at zero",
             {{{"a", C, 2.0}, {"j", j0}, {"b", C, 4.0}}, {{0, 1}, {1, 2}}},
             {1.0, 1.0},
             {0.5, 0.25},
             {0.0, 0.0}},
            {"a transformer's modulus from the higher port to the lower",
             {{{"s", Sf}, {"x", TF, 4.0}, {"r", R, 0.5}}, {{0, 1}, {1, 2}}},
             {},
             {24.0, 6.0},
             {3.0, 12.0}},
            {"a gyrator's",
             {{{"s", Sf}, {"x", GY, 4.0}, {"r", R, 0.5}}, {{0, 1}, {1, 2}}},
             {},
             {96.0, 12.0},
             {3.0, 24.0}},
            {"a missing parameter is one", {{{"s", Se}, {"r", R}}, {{0, 1}}}, {}, {3.0}, {3.0}},
            {"sources of the same id are driven alike",
             {{{"s", Se}, {"r", R, 2.0}, {"s", Sf}, {"r", R, 2.0}}, {{0, 1}, {2, 3}}},
             {},
             {3.0, 6.0},
             {1.5, 3.0}},
            {"a source without a value is zero",
             {{{"q", Se}, {"r", R}}, {{0, 1}}},
             {},
             {0.0},
             {0.0}},
        };
    for (const auto& [what, graph, state, effort, flow] : table) {
        const Eval eval = StateSpace::create(graph).value().derivatives(state, {{"s", 3.0}});
        EXPECT_EQ(eval.effort, effort) << what;
        EXPECT_EQ(eval.flow, flow) << what;
    }
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

} // namespace
} // namespace kelvo
