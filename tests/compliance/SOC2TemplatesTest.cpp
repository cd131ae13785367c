#include "compliance/SOC2Templates.h"

#include "base/Sha256.h"
#include "base/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace kelvo {
namespace {

using Names = std::vector<std::string>;

std::vector<ExtractedGraph::N> joinedNodes() {
    return {{"owner", "Se", {}}, {"owner_j0", "j0", {}}};
}

TEST(SOC2Templates, NineFamiliesInOrderWithTheirSizesGapsAndTexts) {
    const std::tuple<const char*, int, double> table[] = {
        {"CC1", 5, 0.6}, {"CC2", 3, 0.4}, {"CC3", 4, 0.6}, {"CC4", 3, 0.5}, {"CC5", 4, 0.5},
        {"CC6", 8, 0.8}, {"CC7", 5, 0.7}, {"CC8", 4, 0.5}, {"CC9", 3, 0.4},
    };
    const auto& all = SOC2Templates::all();
    ASSERT_EQ(all.size(), std::size(table));
    std::string texts;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto& [id, controls, gap] = table[i];
        EXPECT_EQ(all[i].id, id);
        EXPECT_EQ(all[i].controls, controls) << id;
        EXPECT_EQ(all[i].graph.nodes.at(3).param, gap) << id;
        EXPECT_TRUE(all[i].graph.validated().has_value()) << id;
        texts += all[i].title + "\n" + all[i].criterionText + "\n" + all[i].policy + "\n" +
                 joined(all[i].evidence, "\n") + "\n\n";
    }
    EXPECT_EQ(sha256Hex(texts), "e4303dd6d330380591db9e821b42616d9d5d01f609a0e2b7a50d84bd73f459df")
        << "the wording is fixed: " << texts;
}

TEST(SOC2Templates, AFamilyIsDrivenThroughATransformerAndStoresItsControls) {
    const ExtractedGraph expected = {
        .nodes = {{"owner", "Se", {}},
                  {"TF_CC6", "TF", 8.0},
                  {"1_CC6", "j1", {}},
                  {"R_CC6gap", "R", 0.8},
                  {"I_CC6proc", "I", 1.0},
                  {"C_CC6", "C", 8.0}},
        .bonds = {{"owner", "TF_CC6"},
                  {"TF_CC6", "1_CC6"},
                  {"1_CC6", "R_CC6gap"},
                  {"1_CC6", "I_CC6proc"},
                  {"1_CC6", "C_CC6"}},
    };
    EXPECT_EQ(SOC2Templates::all()[5].graph, expected);
}

TEST(SOC2Templates, ComposingNothingLeavesTheOwnerOnItsJunction) {
    const ExtractedGraph expected{.nodes = joinedNodes(), .bonds = {{"owner", "owner_j0"}}};
    EXPECT_EQ(SOC2Templates::compose({}), expected);
    EXPECT_EQ(SOC2Templates::compose(Names{"cc1", "", "CC10"}), expected);
}

TEST(SOC2Templates, AComposedFamilyHangsOnTheSharedJunctionUnderItsPrefix) {
    ExtractedGraph expected{.nodes = joinedNodes(),
                            .bonds = {{"owner", "owner_j0"},
                                      {"owner_j0", "f1_TF_CC9"},
                                      {"f1_TF_CC9", "f1_1_CC9"},
                                      {"f1_1_CC9", "f1_R_CC9gap"},
                                      {"f1_1_CC9", "f1_I_CC9proc"},
                                      {"f1_1_CC9", "f1_C_CC9"}}};
    for (const ExtractedGraph::N& node : {ExtractedGraph::N{"f1_TF_CC9", "TF", 3.0},
                                          {"f1_1_CC9", "j1", {}},
                                          {"f1_R_CC9gap", "R", 0.4},
                                          {"f1_I_CC9proc", "I", 1.0},
                                          {"f1_C_CC9", "C", 3.0}})
        expected.nodes.push_back(node);
    EXPECT_EQ(SOC2Templates::compose(Names{"CC9"}), expected);
}

TEST(SOC2Templates, SkippedEntriesAreCountedAndRepeatedOnesComposedAgain) {
    const ExtractedGraph graph = SOC2Templates::compose(Names{"XX", "CC1", "CC1"});
    ASSERT_EQ(graph.nodes.size(), 12U);
    EXPECT_EQ(graph.nodes[2].id, "f2_TF_CC1");
    EXPECT_EQ(graph.nodes[7].id, "f3_TF_CC1");
    EXPECT_EQ(graph.bonds[6].from, "owner_j0");
    EXPECT_EQ(graph.bonds.size(), 11U);
}

TEST(SOC2Templates, AnySelectionOfFamiliesIsAValidGraph) {
    for (unsigned chosen = 1; chosen < 512; ++chosen) {
        Names families;
        for (unsigned bit = 0; bit < 9; ++bit) {
            if (chosen & (1U << bit)) families.push_back(SOC2Templates::all()[bit].id);
        }
        const auto graph = SOC2Templates::compose(families);
        EXPECT_EQ(graph.nodes.size(), 2 + 5 * families.size());
        EXPECT_TRUE(graph.validated().has_value()) << chosen;
    }
}

} // namespace
} // namespace kelvo
