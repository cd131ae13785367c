#include "intelligence/SiriBridge.h"

#include "base/Sha256.h"
#include "intelligence/GenerableRecords.h"
#include "support/Fakes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo::test {
namespace {

using SiriBondGraph::Answer;
using SiriBondGraph::Failure;
using Asked = tl::expected<Answer, Failure>;
using Extracted = tl::expected<BondGraph, Failure>;

constexpr const char* sourceAndLoad =
    R"("nodes":[{"id":"s","kind":"Se"},{"id":"r","kind":"R","param":2}],)"
    R"("bonds":[{"from":"s","to":"r"}]})";

Asked asked(FakeModel& model, const std::string& reply) {
    std::optional<Asked> result;
    SiriBondGraph::ask(model, "Why?\n", [&](Asked answer) { result = std::move(answer); });
    model.answer(reply);
    return std::move(*result);
}

Extracted extractedFrom(FakeModel& model, const std::string& reply) {
    std::optional<Extracted> result;
    SiriBondGraph::extract(model, " A pump ", [&](Extracted graph) { result = std::move(graph); });
    model.answer(reply);
    return std::move(*result);
}

TEST(SiriBondGraph, AsksForAnAnswerAndSilentlyForAGraphOrForStructureOnly) {
    FakeModel model;
    model.version = 15; // to look at it is left to the caller
    EXPECT_TRUE(asked(model, R"({"answer":"","nodes":[],"bonds":[]})").has_value());
    (void)extractedFrom(model, "{}");
    const ModelRequest& answer = model.requests.at(0);
    EXPECT_EQ(sha256Hex(answer.instructions),
              "aec88918ce09207256abfe32a72fe1d7eb6ba77c88d4c9749f65b1f308bdf541")
        << answer.instructions;
    EXPECT_EQ(answer.prompt, "Why?\n");
    EXPECT_EQ(answer.recordName, "SOCReply");
    EXPECT_EQ(answer.schema, jsonSchema<SOCReply>());
    const ModelRequest& graph = model.requests.at(1);
    EXPECT_EQ(sha256Hex(graph.instructions),
              "b2f473484fd7c1d59b262e7942594c372cb1f4ebcda2419005abe86a97b3e84a")
        << graph.instructions;
    EXPECT_EQ(graph.prompt, " A pump ");
    EXPECT_EQ(graph.recordName, "GeneratedGraph");
    EXPECT_EQ(graph.schema, jsonSchema<GeneratedGraph>());
}

TEST(SiriBondGraph, AsksNothingWhereTheModelIsUnavailable) {
    FakeModel model;
    model.unavailable = "appleIntelligenceNotEnabled";
    std::vector<std::string> told;
    SiriBondGraph::ask(model, "Why?", [&](const Asked& answer) {
        told.push_back(SiriBondGraph::description(answer.error()));
        EXPECT_TRUE(std::holds_alternative<SiriError>(answer.error()));
    });
    SiriBondGraph::extract(model, "A pump", [&](const Extracted& graph) {
        told.push_back(SiriBondGraph::description(graph.error()));
    });
    EXPECT_THAT(told,
                ::testing::Each("Apple Intelligence unavailable: appleIntelligenceNotEnabled. "
                                "Enable it in System Settings ▸ Apple Intelligence & Siri."));
    EXPECT_EQ(told.size(), 2u);
    EXPECT_TRUE(model.requests.empty());
}

TEST(SiriBondGraph, AnswersWithAValidatedGraphWithoutStrokes) {
    FakeModel model;
    const Asked answer = asked(model, std::string(R"({"answer":"Built.",)") + sourceAndLoad);
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->answer, "Built.");
    ASSERT_TRUE(answer->graph.has_value());
    EXPECT_EQ(answer->graph->nodes.at(1).param, 2.0);
    EXPECT_EQ(answer->graph->nodes.at(0).param, std::nullopt);
    EXPECT_EQ(answer->graph->bonds.at(0).causality, Causality::unset);
}

TEST(SiriBondGraph, DropsAMalformedGraphFromAnAnswerAndFailsToExtractIt) {
    const std::pair<std::string, const char*> malformed[] = {
        {R"("nodes":[],"bonds":[{"from":"a","to":"b"}]})", "extracted graph has no nodes"},
        {R"("nodes":[{"id":"a","kind":"X"}],"bonds":[]})",
         "unknown element kind 'X' — not a bond-graph element"},
        {R"("nodes":[{"id":"a","kind":"R"}],"bonds":[]})",
         "element a (R) requires a parameter value"},
        {R"("nodes":[{"id":"a","kind":"Se"}],"bonds":[{"from":"a","to":"q"}]})",
         "bond references unknown node id 'q'"},
    };
    FakeModel model;
    for (const auto& [graph, text] : malformed) {
        const Asked answer = asked(model, R"({"answer":"Plain.",)" + graph);
        ASSERT_TRUE(answer.has_value()) << graph;
        EXPECT_EQ(answer->answer, "Plain.");
        EXPECT_FALSE(answer->graph.has_value()) << graph;
        const Extracted extracted = extractedFrom(model, "{" + graph);
        ASSERT_FALSE(extracted.has_value()) << graph;
        EXPECT_EQ(SiriBondGraph::description(extracted.error()), text);
    }
    const Extracted good = extractedFrom(model, std::string("{") + sourceAndLoad);
    ASSERT_TRUE(good.has_value());
    EXPECT_NE(good->bonds.at(0).causality, Causality::unset);
    // Structure that passes the form but not the kernel: two sources against each other.
    const Extracted conflict = extractedFrom(
        model, R"({"nodes":[{"id":"a","kind":"Se"},{"id":"j","kind":"j0"},{"id":"b","kind":"Se"}],)"
               R"("bonds":[{"from":"a","to":"j"},{"from":"j","to":"b"}]})");
    ASSERT_FALSE(conflict.has_value());
    EXPECT_TRUE(std::holds_alternative<GraphRejection>(conflict.error()));
}

TEST(SiriBondGraph, PassesTheModelsFailureOn) {
    FakeModel model;
    std::vector<std::string> told;
    SiriBondGraph::ask(model, "", [&](const Asked& answer) {
        told.push_back(SiriBondGraph::description(answer.error()));
    });
    model.fail("context overflow");
    SiriBondGraph::extract(model, "", [&](const Extracted& graph) {
        told.push_back(SiriBondGraph::description(graph.error()));
    });
    model.fail("refused");
    EXPECT_THAT(told, ::testing::ElementsAre("context overflow", "refused"));
    EXPECT_FALSE(asked(model, R"({"answer":"no lists"})").has_value());
}

} // namespace
} // namespace kelvo::test
