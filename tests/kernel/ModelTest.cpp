#include "kernel/Model.h"

#include "kernel/Extraction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace kelvo {
namespace {

using testing::ElementsAre;

Node node(std::string id, NodeKind kind) {
    return {.id = std::move(id), .kind = kind};
}

TEST(NodeKind, KnowsItsSymbolPortsAndRole) {
    constexpr std::optional<int> any;
    // The last column: s source, t storage, j junction.
    const std::tuple<NodeKind, const char*, std::optional<int>, char> table[] = {
        {NodeKind::Se, "Se", 1, 's'},   {NodeKind::Sf, "Sf", 1, 's'},
        {NodeKind::R, "R", 1, '-'},     {NodeKind::C, "C", 1, 't'},
        {NodeKind::I, "I", 1, 't'},     {NodeKind::TF, "TF", 2, '-'},
        {NodeKind::GY, "GY", 2, '-'},   {NodeKind::j0, "j0", any, 'j'},
        {NodeKind::j1, "j1", any, 'j'},
    };
    for (const auto& [kind, symbol, portCount, role] : table) {
        SCOPED_TRACE(symbol);
        EXPECT_EQ(rawValue(kind), symbol);
        EXPECT_EQ(nodeKind(symbol), kind);
        EXPECT_EQ(ports(kind), portCount);
        EXPECT_EQ(isSource(kind), role == 's');
        EXPECT_EQ(isStorage(kind), role == 't');
        EXPECT_EQ(isJunction(kind), role == 'j');
    }
    for (const char* unknown : {"se", "SE", "", " Se", "J0", "R "})
        EXPECT_EQ(nodeKind(unknown), std::nullopt) << unknown;
}

TEST(Structure, ReportsTheFirstFaultWithItsText) {
    const Node r = node("R1", NodeKind::R);
    const Node se = node("s", NodeKind::Se);
    const Node j = node("J", NodeKind::j1);
    const Node tf = node("T", NodeKind::TF);
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    const std::string outside = "bond references out-of-range node index ";
    const std::pair<BondGraph, std::string> table[] = {
        {{{r, r, r}, {{0, 5}}}, outside + "5"},
        {{{r, r, r}, {{3, -1}}}, outside + "3"},
        {{{r, r}, {{0, lowest}}}, outside + "-9223372036854775808"},
        {{{r, r, r}, {{2, 2}}}, "node 2 bonds to itself"},
        {{{r, r}, {{1, 1}, {0, 7}}}, "node 1 bonds to itself"},
        {{{r, se}, {{0, 1}, {1, 0}, {0, 9}}}, outside + "9"},
        {{{r, se}, {{0, 1}, {0, 1}}}, "element R1 needs 1 port(s), has 2"},
        {{{tf, se}, {{0, 1}}}, "element T needs 2 port(s), has 1"},
        {{{se, j}, {{0, 1}}}, "junction J degree 1 (need ≥ 2)"},
        {{{j}, {}}, "junction J degree 0 (need ≥ 2)"},
    };
    for (const auto& [graph, text] : table) {
        const auto result = graph.validateStructure();
        ASSERT_FALSE(result) << text;
        EXPECT_EQ(result.error().description(), text);
    }
}

TEST(Structure, LooksAtDegreesOnly) {
    const Node j = node("same", NodeKind::j0);
    EXPECT_TRUE(BondGraph{}.validateStructure());
    EXPECT_TRUE((BondGraph{{j, j}, {{0, 1}, {0, 1}}}.validateStructure()));
    BondGraph wide{{j}, {}};
    for (std::int64_t i = 1; i <= 7; ++i) {
        wide.nodes.push_back(node("same", NodeKind::C));
        wide.bonds.push_back({i, 0});
    }
    EXPECT_TRUE(wide.validateStructure());
}

TEST(Degrees, CountBondEndsThatNameANode) {
    const Node r = node("r", NodeKind::R);
    const BondGraph graph{{r, r, r}, {{0, 1}, {1, 2}, {1, 1}, {-1, 3}, {0, 99}}};
    EXPECT_THAT(graph.degrees(), ElementsAre(2, 4, 1));
    EXPECT_THAT((BondGraph{{r, r}, {}}.degrees()), ElementsAre(0, 0));
}

TEST(EffortSource, IsTheEndThatTheStrokeNames) {
    const BondGraph graph{
        {},
        {{3, 4, Causality::aSetsEffort}, {3, 4, Causality::bSetsEffort}, {3, 4, Causality::unset}}};
    EXPECT_EQ(graph.effortSourceNode(0), 3);
    EXPECT_EQ(graph.effortSourceNode(1), 4);
    EXPECT_EQ(graph.effortSourceNode(2), 4);
    for (const std::int64_t none :
         {std::int64_t{-1}, std::int64_t{3}, std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_EQ(graph.effortSourceNode(none), -1);
    }
}

TEST(ConstitutiveLaws, RelateEffortAndFlow) {
    EXPECT_EQ(Constitutive::resistor(2.0, 0.6), 1.2);
    EXPECT_EQ(Constitutive::capacitorEffort(0.5, 2.0), 0.25);
    EXPECT_EQ(Constitutive::inertanceFlow(0.3, 0.5), 0.6);
}

TEST(ExtractedGraph, IsRejectedForItsFirstFault) {
    const std::pair<ExtractedGraph, std::string> table[] = {
        {{{}, {{"a", "b"}}}, "extracted graph has no nodes"},
        {{{{"a", "X"}, {"a", "R", 1.0}}, {}}, "duplicate node id 'a'"},
        {{{{"a", "se"}, {"b", "R"}}, {}}, "unknown element kind 'se' — not a bond-graph element"},
        {{{{"R1", "R"}, {"b", "X"}}, {{"Q", "Q"}}}, "element R1 (R) requires a parameter value"},
        {{{{"A", "Se"}}, {{"A", "Q"}, {"P", "A"}}}, "bond references unknown node id 'Q'"},
        {{{{"A", "Se"}}, {{"P", "Q"}}}, "bond references unknown node id 'P'"},
        {{{{"B", "Se"}, {"A", "j0"}}, {{"A", "A"}}}, "node 1 bonds to itself"},
        {{{{"s", "Se"}, {"j", "j1"}}, {{"s", "j"}}}, "junction j degree 1 (need ≥ 2)"},
    };
    for (const auto& [graph, text] : table) {
        const auto result = graph.validated();
        ASSERT_FALSE(result) << text;
        EXPECT_EQ(description(result.error()), text);
    }
    for (const char* kind : {"R", "C", "I", "TF", "GY"}) {
        EXPECT_EQ((ExtractedGraph{{{"x", kind}}, {}}.validated().error()),
                  GraphRejection(ExtractionError::missingParam("x", kind)));
    }
}

TEST(ExtractedGraph, BecomesABondGraphInTheSameOrder) {
    const ExtractedGraph extracted{{{"s", "Se", 7.0}, {"r", "R", -2.0}}, {{"r", "s"}}};
    const BondGraph expected{{{"s", NodeKind::Se, 7.0}, {"r", NodeKind::R, -2.0}}, {{1, 0}}};
    EXPECT_EQ(extracted.validated(), expected);
}

} // namespace
} // namespace kelvo
