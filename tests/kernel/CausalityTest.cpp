#include "kernel/Model.h"
#include "support/FamilyGraphs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace kelvo {
namespace {

using testing::ElementsAre;

constexpr auto a = Causality::aSetsEffort;
constexpr auto b = Causality::bSetsEffort;

/// Nodes named by kind and position ("j01" is a j0 at position 1).
BondGraph graphOf(const std::vector<NodeKind>& kinds, std::vector<Bond> bonds) {
    BondGraph graph{{}, std::move(bonds)};
    for (const NodeKind kind : kinds) {
        graph.nodes.push_back(
            {.id = std::string(rawValue(kind)) + std::to_string(graph.nodes.size()), .kind = kind});
    }
    return graph;
}

std::vector<Causality> strokes(const BondGraph& graph) {
    std::vector<Causality> result;
    const auto causal = graph.assignCausality();
    if (!causal) {
        ADD_FAILURE() << causal.error().description();
        return result;
    }
    for (const Bond& bond : causal->bonds)
        result.push_back(bond.causality);
    EXPECT_EQ(causal->assignCausality(), causal) << "assigning again changes nothing";
    return result;
}

TEST(Causality, OfTheStartUpGraphMakesBothStoresIntegral) {
    const BondGraph graph = support::startupGraph().validated().value();
    EXPECT_THAT(strokes(graph), ElementsAre(a, b, a, b));
    EXPECT_EQ(graph.bonds[0].causality, Causality::unset) << "the input stays as it is";
}

TEST(Causality, FollowsNodeOrderThroughEachElement) {
    using enum NodeKind;
    const std::tuple<const char*, BondGraph, std::vector<Causality>> table[] = {
        {"derivative causality", graphOf({C, j0, C}, {{0, 1}, {1, 2}}), {a, a}},
        {"the first R", graphOf({R, j1, R, R}, {{0, 1}, {1, 2}, {1, 3}}), {b, b, b}},
        {"of two joined resistors the first takes the flow", graphOf({R, R}, {{1, 0}}), {a}},
        {"a transformer passes effort through", graphOf({Se, TF, C}, {{0, 1}, {1, 2}}), {a, a}},
        {"a gyrator turns effort into flow", graphOf({Se, GY, I}, {{0, 1}, {1, 2}}), {a, b}},
        {"a later source overwrites an earlier one", graphOf({Se, Sf}, {{0, 1}}), {a}},
        {"two sources on one bond: the last one counts", graphOf({Se, Se}, {{0, 1}}), {b}},
        {"a stroke that is there stays", graphOf({R, R}, {{0, 1, a}}), {a}},
    };
    for (const auto& [what, graph, expected] : table)
        EXPECT_EQ(strokes(graph), expected) << what;
}

TEST(Causality, FailsAtTheJunctionOrBondThatBreaksIt) {
    using enum NodeKind;
    const std::pair<BondGraph, std::string> table[] = {
        {graphOf({Se, j0, Se}, {{0, 1}, {1, 2}}),
         "junction j01 over-causal (>1 strong bond) — smartcard-6982 pattern"},
        {graphOf({Sf, j1, Sf, Sf, j1, Sf}, {{3, 4}, {4, 5}, {0, 1}, {1, 2}}),
         "junction j11 over-causal (>1 strong bond) — smartcard-6982 pattern"},
        {graphOf({j1, j1}, {{0, 1}, {0, 1}}),
         "junction bond 0-1 under-causal (no causal stroke resolved)"},
        {graphOf({j0, C, C}, {{1, 0, a}, {2, 0, a}}),
         "junction j00 over-causal (>1 strong bond) — smartcard-6982 pattern"},
        {graphOf({j0, C, C}, {{1, 0, b}, {2, 0, b}}),
         "junction j00 under-causal (no causal stroke resolved)"},
        {graphOf({Se, j0}, {{0, 1}}), "junction j01 degree 1 (need ≥ 2)"},
    };
    for (const auto& [graph, text] : table) {
        const auto causal = graph.assignCausality();
        ASSERT_FALSE(causal) << text;
        EXPECT_EQ(causal.error().description(), text);
    }
}

} // namespace
} // namespace kelvo
