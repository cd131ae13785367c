#include "intelligence/SiriBridge.h"

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

TEST(SiriBondGraph, AsksForAnAnswerAndSilentlyForAGraph) {
    FakeModel model;
    asked(model, R"({"answer":"","nodes":[],"bonds":[]})");
    const ModelRequest& request = model.requests.at(0);
    EXPECT_EQ(
        request.instructions,
        "You are a SOC2 compliance assistant. Answer the user briefly, in plain business English.\n"
        "NEVER use internal/technical jargon in `answer` — no \"bond graph\", \"totem\", "
        "\"kernel\", \"causality\",\n"
        "\"dissipation\", \"element\", \"junction\", or symbols. Talk about controls, evidence, "
        "risk, and approvals\n"
        "the way an auditor or founder would.\n"
        "Separately and silently: if the user DESCRIBES a system or control to model, fill "
        "nodes/bonds with the\n"
        "structure (Se Sf R C I TF GY j0 j1) — this is internal and never shown to the user. "
        "Never assign\n"
        "causality or solve equations. For general questions, answer plainly and leave nodes/bonds "
        "empty.");
    EXPECT_EQ(request.prompt, "Why?\n");
    EXPECT_EQ(request.recordName, "SOCReply");
    EXPECT_EQ(request.schema, jsonSchema<SOCReply>());
}

TEST(SiriBondGraph, AsksForStructureOnly) {
    FakeModel model;
    (void)extractedFrom(model, "{}");
    const ModelRequest& request = model.requests.at(0);
    EXPECT_EQ(request.instructions,
              "You translate a physical-system description into a bond-graph STRUCTURE only.\n"
              "List elements (Se Sf R C I TF GY j0 j1) and the bonds between them.\n"
              "Never assign causality, effort/flow direction, or solve equations — only structure "
              "+ parameters.");
    EXPECT_EQ(request.prompt, " A pump ");
    EXPECT_EQ(request.recordName, "GeneratedGraph");
    EXPECT_EQ(request.schema, jsonSchema<GeneratedGraph>());
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

TEST(SiriBondGraph, LeavesTheVersionToItsCaller) {
    FakeModel model;
    model.version = 15;
    EXPECT_TRUE(asked(model, R"({"answer":"x","nodes":[],"bonds":[]})").has_value());
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

/// Graphs that no kernel takes, and what is said of them.
struct Malformed {
    const char* graph;
    const char* description;
};
const std::vector<Malformed> malformed = {
    {R"("nodes":[{"id":"a","kind":"X"}],"bonds":[]})",
     "unknown element kind 'X' — not a bond-graph element"},
    {R"("nodes":[{"id":"a","kind":"Se"},{"id":"a","kind":"R","param":1}],"bonds":[]})",
     "duplicate node id 'a'"},
    {R"("nodes":[{"id":"a","kind":"R"}],"bonds":[]})", "element a (R) requires a parameter value"},
    {R"("nodes":[{"id":"a","kind":"Se"}],"bonds":[{"from":"a","to":"q"}]})",
     "bond references unknown node id 'q'"},
};

TEST(SiriBondGraph, KeepsTheAnswerAndDropsAMalformedGraph) {
    std::vector<std::string> replies = {
        R"({"answer":"Plain.","nodes":[],"bonds":[{"from":"a","to":"b"}]})"};
    for (const Malformed& each : malformed)
        replies.push_back(std::string(R"({"answer":"Plain.",)") + each.graph);
    for (const std::string& reply : replies) {
        FakeModel model;
        const Asked answer = asked(model, reply);
        ASSERT_TRUE(answer.has_value()) << reply;
        EXPECT_EQ(answer->answer, "Plain.");
        EXPECT_FALSE(answer->graph.has_value()) << reply;
    }
}

TEST(SiriBondGraph, ExtractsACausalGraph) {
    FakeModel model;
    const Extracted graph = extractedFrom(model, std::string("{") + sourceAndLoad);
    ASSERT_TRUE(graph.has_value());
    EXPECT_NE(graph->bonds.at(0).causality, Causality::unset);
}

TEST(SiriBondGraph, FailsToExtractWhatTheKernelRefuses) {
    for (const Malformed& each : malformed) {
        FakeModel model;
        const Extracted graph = extractedFrom(model, std::string("{") + each.graph);
        ASSERT_FALSE(graph.has_value()) << each.graph;
        EXPECT_EQ(SiriBondGraph::description(graph.error()), each.description);
    }
    FakeModel model;
    EXPECT_EQ(
        SiriBondGraph::description(extractedFrom(model, R"({"nodes":[],"bonds":[]})").error()),
        "extracted graph has no nodes");
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
