#include "kernel/Extraction.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kelvo {
namespace {

TEST(ExtractedGraph, IsRejectedForItsFirstFault) {
    using E = ExtractionError;
    struct Row {
        ExtractedGraph graph;
        GraphRejection error;
        std::string text;
    };
    const std::vector<Row> rows{
        {{{}, {{"a", "b"}}}, E::empty(), "extracted graph has no nodes"},
        {{{{"a", "X"}, {"a", "R", 1.0}}, {}}, E::duplicateID("a"), "duplicate node id 'a'"},
        {{{{"a", "se"}, {"b", "R"}}, {}},
         E::unknownKind("se"),
         "unknown element kind 'se' — not a bond-graph element"},
        {{{{"R1", "R"}, {"b", "X"}}, {{"Q", "Q"}}},
         E::missingParam("R1", "R"),
         "element R1 (R) requires a parameter value"},
        {{{{"A", "Se"}}, {{"A", "Q"}, {"P", "A"}}},
         E::danglingBond("Q"),
         "bond references unknown node id 'Q'"},
        {{{{"A", "Se"}}, {{"P", "Q"}}},
         E::danglingBond("P"),
         "bond references unknown node id 'P'"},
        {{{{"B", "Se"}, {"A", "j0"}}, {{"A", "A"}}},
         GraphError::selfLoop(1),
         "node 1 bonds to itself"},
        {{{{"s", "Se"}, {"j", "j1"}}, {{"s", "j"}}},
         GraphError::junctionDegree("j", 1),
         "junction j degree 1 (need ≥ 2)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto result = row.graph.validated();
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), row.error);
        EXPECT_EQ(description(result.error()), row.text);
    }
}

TEST(ExtractedGraph, NeedsAParameterJustWhereTheElementHasALaw) {
    for (const char* kind : {"R", "C", "I", "TF", "GY"}) {
        EXPECT_EQ((ExtractedGraph{{{"x", kind}}, {}}.validated().error()),
                  GraphRejection(ExtractionError::missingParam("x", kind)));
    }
    for (const char* kind : {"Se", "Sf", "j0", "j1"}) {
        EXPECT_TRUE(std::holds_alternative<GraphError>(
            ExtractedGraph{{{"x", kind}}, {}}.validated().error()))
            << kind;
    }
}

TEST(ExtractedGraph, BecomesABondGraphInTheSameOrder) {
    const ExtractedGraph extracted{{{"s", "Se", 7.0}, {"r", "R", -2.0}}, {{"r", "s"}}};
    const BondGraph expected{{{"s", NodeKind::Se, 7.0}, {"r", NodeKind::R, -2.0}}, {{1, 0}}};
    EXPECT_EQ(extracted.validated(), expected);
}

} // namespace
} // namespace kelvo
