#include "intelligence/EvidenceMapper.h"
#include "intelligence/PolicyGen.h"
#include "intelligence/SiriBridge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelBench.h"

namespace kelvo::test {
namespace {

/// A call of each kind over the real client and a real connection.
class ModelCalls : public ::testing::TestWithParam<Api> {
protected:
    /// Lets the server answer so, to the call and to a second try of it.
    template <class Result>
    Result answered(const Reply& reply,
                    const std::function<void(std::function<void(Result)>)>& call) {
        bench.server.chat.assign(2, reply);
        std::optional<Result> result;
        call([&](Result value) { result.emplace(std::move(value)); });
        EXPECT_TRUE(eventually([&] { return result.has_value(); }));
        return std::move(*result);
    }

    std::optional<EvidenceMapping> mapped(const char* content) {
        return answered<std::optional<EvidenceMapping>>(bench.server.says(content), [&](auto done) {
            EvidenceMapper::mapEvidence(*bench.model, "text", {"CC1-a"}, std::move(done));
        });
    }

    ModelBench bench{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Servers, ModelCalls, ::testing::Values(Api::native, Api::openAi));

TEST_P(ModelCalls, TakeAnAnswerOutOfThinkingAndFencesAndRefuseOneThatIsNotWhole) {
    const EvidenceMapping mapping = {{"CC1-a", "other"}, "S"};
    for (const char* content :
         {R"({"criteria":["CC1-a","other"],"summary":"S"})",
          "<think>Let me {\"x\":1}</think>\n{\"criteria\":[\"CC1-a\",\"other\"],\"summary\":\"S\"}",
          "```json\n{\"criteria\":[\"CC1-a\",\"other\"],\"summary\":\"S\",\"more\":[1]}\n```"})
        EXPECT_EQ(mapped(content), mapping) << content;
    for (const char* content :
         {R"({"criteria":["CC1-a"]})", R"({"criteria":["CC1-a"],"summary":null})",
          R"({"criteria":"CC1-a","summary":"S"})", R"({"criteria":[1],"summary":"S"})", "[]",
          "I would say CC1-a.", "<think>It is", ""})
        EXPECT_EQ(mapped(content), std::nullopt) << content;
}

TEST_P(ModelCalls, AskForAGraphAndDraftAPolicy) {
    using Answer = tl::expected<SiriBondGraph::Answer, SiriBondGraph::Failure>;
    const std::function<void(std::function<void(Answer)>)> ask = [&](auto done) {
        SiriBondGraph::ask(*bench.model, "A source and a load", std::move(done));
    };
    const Reply graph =
        bench.server.says(R"({"answer":"Built.","nodes":[{"id":"s","kind":"Se","param":null},)"
                          R"({"id":"r","kind":"R","param":2}],"bonds":[{"from":"s","to":"r"}]})");
    const auto answer = answered<Answer>(graph, ask);
    ASSERT_TRUE(answer && answer->graph);
    EXPECT_EQ(answer->answer, "Built.");
    EXPECT_EQ(answer->graph->nodes.size(), 2u);
    const auto failed =
        answered<Answer>({.body = R"({"error":"out of memory"})", .status = 500}, ask);
    ASSERT_FALSE(failed.has_value());
    EXPECT_THAT(SiriBondGraph::description(failed.error()), ::testing::HasSubstr("out of memory"));
    EXPECT_EQ(answered<std::optional<std::string>>(
                  bench.server.says("<think>hm</think>\n  A policy.\n"),
                  [&](auto done) {
                      PolicyGen::generate(*bench.model, "CC1", "x", "Ada", std::move(done));
                  }),
              "A policy.");
}

} // namespace
} // namespace kelvo::test
