#include "kernel/Model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace kelvo {
namespace {

using testing::ElementsAre;

Node node(std::string id, NodeKind kind) {
    return {.id = std::move(id), .kind = kind};
}

TEST(NodeKind, KnowsItsSymbolPortsAndRole) {
    struct Row {
        NodeKind kind;
        const char* symbol;
        std::optional<int> ports;
        char role; ///< s source, t storage, j junction
    };
    const std::array<Row, 9> rows{{{NodeKind::Se, "Se", 1, 's'},
                                   {NodeKind::Sf, "Sf", 1, 's'},
                                   {NodeKind::R, "R", 1, '-'},
                                   {NodeKind::C, "C", 1, 't'},
                                   {NodeKind::I, "I", 1, 't'},
                                   {NodeKind::TF, "TF", 2, '-'},
                                   {NodeKind::GY, "GY", 2, '-'},
                                   {NodeKind::j0, "j0", std::nullopt, 'j'},
                                   {NodeKind::j1, "j1", std::nullopt, 'j'}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.symbol);
        EXPECT_EQ(rawValue(row.kind), row.symbol);
        EXPECT_EQ(nodeKind(row.symbol), row.kind);
        EXPECT_EQ(ports(row.kind), row.ports);
        EXPECT_EQ(isSource(row.kind), row.role == 's');
        EXPECT_EQ(isStorage(row.kind), row.role == 't');
        EXPECT_EQ(isJunction(row.kind), row.role == 'j');
    }
    for (const char* unknown : {"se", "SE", "", " Se", "J0", "R "}) {
        EXPECT_EQ(nodeKind(unknown), std::nullopt) << unknown;
    }
}

TEST(Structure, ReportsTheFirstFaultWithItsText) {
    const Node r = node("R1", NodeKind::R);
    const Node se = node("s", NodeKind::Se);
    const Node j = node("J", NodeKind::j1);
    const Node tf = node("T", NodeKind::TF);
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    struct Row {
        BondGraph graph;
        GraphError error;
        std::string text;
    };
    const std::vector<Row> rows{
        {{{r, r, r}, {{0, 5}}},
         GraphError::badIndex(5),
         "bond references out-of-range node index 5"},
        {{{r, r, r}, {{3, -1}}},
         GraphError::badIndex(3),
         "bond references out-of-range node index 3"},
        {{{r, r}, {{0, lowest}}},
         GraphError::badIndex(lowest),
         "bond references out-of-range node index -9223372036854775808"},
        {{{r, r, r}, {{2, 2}}}, GraphError::selfLoop(2), "node 2 bonds to itself"},
        {{{r, r}, {{1, 1}, {0, 7}}}, GraphError::selfLoop(1), "node 1 bonds to itself"},
        {{{r, se}, {{0, 1}, {1, 0}, {0, 9}}},
         GraphError::badIndex(9),
         "bond references out-of-range node index 9"},
        {{{r, se}, {{0, 1}, {0, 1}}},
         GraphError::arity("R1", 1, 2),
         "element R1 needs 1 port(s), has 2"},
        {{{tf, se}, {{0, 1}}}, GraphError::arity("T", 2, 1), "element T needs 2 port(s), has 1"},
        {{{se, j}, {{0, 1}}}, GraphError::junctionDegree("J", 1), "junction J degree 1 (need ≥ 2)"},
        {{{j}, {}}, GraphError::junctionDegree("J", 0), "junction J degree 0 (need ≥ 2)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto result = row.graph.validateStructure();
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), row.error);
        EXPECT_EQ(result.error().description(), row.text);
    }
    EXPECT_EQ(GraphError::overCausal("J").description(),
              "junction J over-causal (>1 strong bond) — smartcard-6982 pattern");
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

} // namespace
} // namespace kelvo
