#include "intelligence/Assistant.h"
#include "intelligence/EvidenceMapper.h"
#include "intelligence/PolicyGen.h"
#include "intelligence/SiriBridge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelBench.h"

namespace kelvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// The five calls over the real client and a real connection.
class ModelCalls : public ::testing::TestWithParam<Api> {
protected:
    template <class Result>
    Result waitFor(const std::function<void(std::function<void(Result)>)>& call) {
        std::optional<Result> result;
        call([&](Result value) { result.emplace(std::move(value)); });
        EXPECT_TRUE(eventually([&] { return result.has_value(); }));
        return std::move(*result);
    }

    std::optional<EvidenceMapping> mapped() {
        return waitFor<std::optional<EvidenceMapping>>([&](auto done) {
            EvidenceMapper::mapEvidence(model, "text", {"CC1-a", "CC2-b"}, std::move(done));
        });
    }

    ScriptedModelServer server{GetParam()};
    LoopbackModel model{builtIn(), patient({server.port()})};
};

INSTANTIATE_TEST_SUITE_P(Servers, ModelCalls, ::testing::Values(Api::native, Api::openAi),
                         [](const auto& each) {
                             return each.param == Api::native ? "Native" : "Shared";
                         });

TEST_P(ModelCalls, MapEvidence) {
    server.chat = {server.says(R"({"criteria":["CC2-b","other"],"summary":"A list."})")};
    const auto mapping = mapped();
    ASSERT_TRUE(mapping.has_value());
    EXPECT_THAT(mapping->criteria, ElementsAre("CC2-b", "other"));
    EXPECT_EQ(mapping->summary, "A list.");
}

TEST_P(ModelCalls, TakeAnAnswerOutOfThinkingAndFences) {
    for (const char* wrapping : {"<think>Let me see {\"criteria\":1}</think>\n%", "```json\n%\n```",
                                 "<think></think>```\n%```"}) {
        std::string content = wrapping;
        content.replace(content.find('%'), 1, R"({"criteria":["CC1-a"],"summary":"S","more":[1]})");
        server.chat = {server.says(content)};
        const auto mapping = mapped();
        ASSERT_TRUE(mapping.has_value()) << content;
        EXPECT_THAT(mapping->criteria, ElementsAre("CC1-a"));
    }
}

TEST_P(ModelCalls, GiveNoResultForARecordThatIsNotWhole) {
    for (const char* content :
         {R"({"criteria":["CC1-a"]})", R"({"criteria":"CC1-a","summary":"S"})",
          R"({"criteria":[1],"summary":"S"})", R"({"criteria":["CC1-a"],"summary":null})", "[]",
          "I would say CC1-a.", "<think>It is", ""}) {
        server.chat = {server.says(content), server.says(content)};
        EXPECT_EQ(mapped(), std::nullopt) << content;
    }
}

TEST_P(ModelCalls, GiveNoResultWhereTheServerFails) {
    for (const Fault fault : {Fault::drop, Fault::truncated}) {
        Reply reply = server.says(R"({"criteria":[],"summary":"S"})");
        reply.fault = fault;
        server.chat.assign(4, reply); // Qt sends again where a connection drops at once
        EXPECT_EQ(mapped(), std::nullopt);
        server.chat.clear();
    }
}

TEST_P(ModelCalls, DraftAPolicy) {
    server.chat = {server.says("<think>hm</think>\n  A policy.\n")};
    const auto text = waitFor<std::optional<std::string>>([&](auto done) {
        PolicyGen::generate(model, "CC1-a", "facts GAP: x", "Ada", std::move(done));
    });
    EXPECT_EQ(text, "A policy.");
}

TEST_P(ModelCalls, AskTheAssistant) {
    server.chat = {server.says(R"({"answer":"Soon.","action":" Play "})")};
    const auto reply = waitFor<std::optional<AssistantReply>>(
        [&](auto done) { Assistant::ask(model, "When?", "Owner: Ada", std::move(done)); });
    EXPECT_EQ(reply, (AssistantReply{"Soon.", " Play "}));
}

TEST_P(ModelCalls, AskForAnAnswerWithAGraph) {
    server.chat = {server.says(
        R"({"answer":"Built.","nodes":[{"id":"s","kind":"Se"},{"id":"r","kind":"R","param":2}],)"
        R"("bonds":[{"from":"s","to":"r"}]})")};
    const auto answer = waitFor<tl::expected<SiriBondGraph::Answer, SiriBondGraph::Failure>>(
        [&](auto done) { SiriBondGraph::ask(model, "A source and a load", std::move(done)); });
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->answer, "Built.");
    ASSERT_TRUE(answer->graph.has_value());
    EXPECT_EQ(answer->graph->nodes.size(), 2u);
}

TEST_P(ModelCalls, ExtractAGraph) {
    server.chat = {server.says(
        R"({"nodes":[{"id":"s","kind":"Se","param":null},{"id":"r","kind":"R","param":2}],)"
        R"("bonds":[{"from":"s","to":"r"}]})")};
    const auto graph = waitFor<tl::expected<BondGraph, SiriBondGraph::Failure>>(
        [&](auto done) { SiriBondGraph::extract(model, "A source and a load", std::move(done)); });
    ASSERT_TRUE(graph.has_value());
    EXPECT_NE(graph->bonds.at(0).causality, Causality::unset);
}

TEST_P(ModelCalls, ReportTheServersFailureToWhoAskedForAGraph) {
    server.chat = {{.body = R"({"error":"out of memory"})", .status = 500}};
    const auto answer = waitFor<tl::expected<SiriBondGraph::Answer, SiriBondGraph::Failure>>(
        [&](auto done) { SiriBondGraph::ask(model, "Hello", std::move(done)); });
    ASSERT_FALSE(answer.has_value());
    EXPECT_THAT(SiriBondGraph::description(answer.error()), HasSubstr("out of memory"));
}

} // namespace
} // namespace kelvo::test
