#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelBench.h"

namespace kelvo::test {
namespace {

using ::testing::HasSubstr;
using namespace std::chrono_literals;

const auto* const environment = ::testing::AddGlobalTestEnvironment(new EventLoopEnvironment);

const ModelRequest plainText = {"Write.", "Now.", "", {}};

TEST(LoopbackModel, SendsTheNativeCallWithOrderedSchemaAndContextSize) {
    ModelBench bench(Api::native, {word, "{}", "A policy."});
    EXPECT_EQ(bench.ask(), word);
    const Json chat = bench.server.chats().at(0);
    EXPECT_EQ(chat.at("model"), "tiny:1b");
    EXPECT_EQ(chat.at("stream"), false);
    EXPECT_EQ(chat.at("think"), false);
    EXPECT_EQ(chat.at("format"), Json::parse(*wordRequest().schema));
    EXPECT_GE(chat.at("options").at("num_ctx"), 8192);
    EXPECT_EQ(chat.at("messages").at(0), (Json{{"role", "system"}, {"content", "Be brief."}}));
    EXPECT_THAT(chat.at("messages").at(1).at("content").get<std::string>(),
                ::testing::AllOf(::testing::StartsWith("One word?\n"),
                                 ::testing::EndsWith(*wordRequest().schema)));
    EXPECT_FALSE(chat.contains("temperature"));

    ModelRequest request = wordRequest();
    request.schema = R"({"type":"object","properties":{"z":{"type":"string"},)"
                     R"("a":{"type":"string"}},"required":[]})";
    EXPECT_EQ(bench.ask(request), "{}");
    const std::string body = bench.server.http().requests.back().body;
    const auto format = body.find("\"format\"");
    EXPECT_LT(body.find("\"z\"", format), body.find("\"a\"", format));

    EXPECT_EQ(bench.ask({"", std::string(30'000, 'x'), "", {}}), "A policy.");
    EXPECT_GE(bench.server.chats().at(2).at("options").at("num_ctx"), 15'000);
}

TEST(LoopbackModel, SendsTheSharedCallWithAStrictSchema) {
    ModelBench bench(Api::openAi, {word});
    EXPECT_EQ(bench.ask(), word);
    const Json chat = bench.server.chats().at(0);
    const Json schema = {
        {"name", "Word"}, {"strict", true}, {"schema", Json::parse(*wordRequest().schema)}};
    EXPECT_EQ(chat.at("response_format"), (Json{{"type", "json_schema"}, {"json_schema", schema}}));
    EXPECT_FALSE(chat.contains("think"));
    EXPECT_FALSE(chat.contains("max_tokens"));
}

TEST(LoopbackModel, AsksForPlainTextWithoutAnyFormat) {
    for (const Api api : {Api::native, Api::openAi}) {
        ModelBench bench(api, {"A policy."});
        EXPECT_EQ(bench.ask(plainText), "A policy.");
        const Json chat = bench.server.chats().at(0);
        EXPECT_FALSE(chat.contains("format"));
        EXPECT_FALSE(chat.contains("response_format"));
        EXPECT_EQ(chat.at("messages").at(1).at("content"), "Now.");
    }
}

std::string nativeChat(const std::string& rest) {
    return R"({"message":{"content":"text"},)" + rest + "}";
}

std::string openAiChat(const std::string& choice) {
    return R"({"choices":[)" + choice + "]}";
}

TEST(LoopbackModel, TakesOrRefusesRepliesForWhatTheyAre) {
    const std::string good = nativeChat(R"("done":true)");
    const std::string goodShared = openAiChat(R"({"message":{"content":"text"}})");
    const std::string cutShared =
        openAiChat(R"({"message":{"content":"text"},"finish_reason":"length"})");
    const std::string refusal =
        openAiChat(R"({"message":{"content":null,"refusal":"I will not"}})");
    const std::string tooLong =
        R"({"error":{"message":"too long","type":"exceed_context_size_error"}})";
    const std::string megabytes(3 << 20, ' ');
    const std::tuple<const char*, Api, Reply, const char*> table[] = {
        {"good", Api::native, {good}, "text"},
        {"slow", Api::native, {.body = good, .delay = 100ms}, "text"},
        {"no length", Api::openAi, {.body = goodShared, .fault = Fault::unannounced}, "text"},
        {"dropped", Api::native, {.fault = Fault::drop}, "broke"},
        {"truncated", Api::openAi, {.body = goodShared, .fault = Fault::truncated}, "broke"},
        {"no HTTP", Api::native, {.body = "hello\r\n\r\n", .fault = Fault::notHttp}, "broke"},
        {"no JSON", Api::openAi, {"<html>hello</html>"}, "no JSON"},
        {"broken JSON", Api::native, {R"({"message":{"content":"te)"}, "no JSON"},
        {"other JSON", Api::openAi, {"[1]"}, "no answer"},
        {"a number", Api::openAi, {openAiChat(R"({"message":{"content":7}})")}, "no answer"},
        {"a list", Api::native, {R"({"message":{"content":["t"]},"done":true})"}, "no answer"},
        {"no choice", Api::openAi, {openAiChat("")}, "no answer"},
        {"not done", Api::native, {nativeChat(R"("done":false)")}, "not whole"},
        {"cut", Api::native, {nativeChat(R"("done":true,"done_reason":"length")")}, "cut"},
        {"cut, shared", Api::openAi, {cutShared}, "cut"},
        {"full", Api::native, {nativeChat(R"("done":true,"prompt_eval_count":8192)")}, "longer"},
        {"a refusal", Api::openAi, {refusal}, "I will not"},
        {"error", Api::native, {.body = R"({"error":"no memory"})", .status = 500}, "no memory"},
        {"an error with status 200", Api::native, {R"({"error":"odd"})"}, "odd"},
        {"busy", Api::native, {.body = R"({"error":"server busy"})", .status = 503}, "busy"},
        {"too long", Api::openAi, {.body = tooLong, .status = 400}, "exceed_context_size"},
        {"oversized, announced", Api::openAi, {megabytes}, "too long"},
        {"oversized", Api::native, {.body = megabytes, .fault = Fault::unannounced}, "too long"},
    };
    for (const auto& [what, api, reply, expected] : table) {
        ModelBench bench(api);
        bench.server.chat.assign(8, reply); // Qt sends again where a connection drops at once
        const std::string outcome = bench.ask(plainText);
        EXPECT_THAT(outcome, HasSubstr(expected)) << what;
        EXPECT_EQ(outcome.starts_with("failed: "), outcome != "text") << what;
    }
}

TEST(LoopbackModel, FallsBackToAnyObjectWhereASchemaIsRefusedAndAsksSoFromThenOn) {
    const Reply refused{.body = R"({"error":{"message":"no schemas here"}})", .status = 400};
    for (const Api api : {Api::native, Api::openAi}) {
        ModelBench bench(api, {word, word});
        bench.server.chat.push_front(refused);
        EXPECT_EQ(bench.ask(), word);
        EXPECT_EQ(bench.ask(), word);
        const auto chats = bench.server.chats();
        ASSERT_EQ(chats.size(), 3u);
        for (const Json& chat : {chats[1], chats[2]}) {
            if (api == Api::native) {
                EXPECT_EQ(chat.at("format"), "json");
            } else {
                EXPECT_EQ(chat.at("response_format"), (Json{{"type", "json_object"}}));
            }
            EXPECT_THAT(chat.at("messages").at(1).at("content").get<std::string>(),
                        HasSubstr(*wordRequest().schema));
        }
    }
    ModelBench bench(Api::openAi);
    bench.server.chat.assign(5, refused);
    EXPECT_THAT(bench.ask(), HasSubstr("refused: no schemas here"));
    EXPECT_EQ(bench.server.chats().size(), 2u);
}

TEST(LoopbackModel, AsksOnceMoreWithThinkingWhereTheAnswerDoesNotFit) {
    ModelBench bench(Api::native, {"Well, it depends.", word, "{}", "[]"});
    EXPECT_EQ(bench.ask(), word);
    EXPECT_TRUE(bench.server.chats().at(0).contains("think"));
    EXPECT_FALSE(bench.server.chats().at(1).contains("think"));
    EXPECT_EQ(bench.ask(), "[]") << "whoever reads it refuses it";
}

TEST(LoopbackModel, DropsTheThinkingSwitchWhereItIsRefused) {
    ModelBench bench(Api::native, {word});
    bench.server.chat.push_front(
        {.body = R"({"error":"\"tiny:1b\" does not support thinking"})", .status = 400});
    EXPECT_EQ(bench.ask(), word);
    EXPECT_FALSE(bench.server.chats().at(1).contains("think"));
    EXPECT_TRUE(bench.server.chats().at(1).at("format").is_object());
}

TEST(LoopbackModel, WaitsForAModelThatIsStillLoadingButNotForEver) {
    const Reply loading{.body = R"({"error":{"code":503,"message":"Loading model"}})",
                        .status = 503};
    ModelBench bench(Api::openAi, {word});
    bench.server.chat.push_front(loading); // once more at the call itself
    const Reply ready = std::exchange(bench.server.lists["/v1/models"], loading);
    std::string outcome;
    bench.model->respond(wordRequest(), [&](auto reply) { outcome = told(reply); });
    ASSERT_TRUE(eventually([&] { return bench.server.http().requests.size() > 12; }));
    EXPECT_EQ(outcome, "");
    bench.server.lists["/v1/models"] = ready;
    ASSERT_TRUE(eventually([&] { return !outcome.empty(); }));
    EXPECT_EQ(outcome, word);

    ModelBench impatient(Api::openAi, {}, [](auto& settings) { settings.firstByte = 20ms; });
    impatient.server.lists["/v1/models"] = loading;
    EXPECT_THAT(impatient.ask(), HasSubstr("loading"));
}

TEST(LoopbackModel, StopsWaitingForAServerThatSaysNothing) {
    for (const bool total : {false, true}) {
        ModelBench bench(Api::native, {}, [&](auto& settings) {
            (total ? settings.total : settings.firstByte) = 20ms;
        });
        bench.server.chat = {{.fault = Fault::silence}};
        EXPECT_THAT(bench.ask(), HasSubstr("in time"));
    }
}

TEST(LoopbackModel, LooksAgainWhenACallFindsNothingAndAnswersByItselfWhereNoServerRuns) {
    auto first = std::make_unique<ScriptedModelServer>(Api::native);
    ScriptedModelServer second(Api::openAi);
    first->chat = {{.body = R"({"error":"model 'tiny:1b' not found"})", .status = 404},
                   first->says(word)};
    second.chat = {second.says(R"({"word":"second"})")};
    LoopbackModel model(builtIn(), patient({first->port(), second.port()}));
    EXPECT_EQ(model.osMajorVersion(), 26);
    EXPECT_EQ(model.unavailableReason(), std::nullopt);
    EXPECT_EQ(asked(model), word) << "looked again where the model was gone";
    EXPECT_EQ(model.modelLine(), "Ollama · tiny:1b");
    first.reset();
    EXPECT_EQ(asked(model), R"({"word":"second"})");
    EXPECT_EQ(model.modelLine(), "llama.cpp · tiny");
    second.http().stop();
    EXPECT_EQ(asked(model), "built-in answer");
    EXPECT_EQ(model.modelLine(), "built-in");
}

TEST(LoopbackModel, TellsTheWindowWhoAnswersBeforeTheFirstCall) {
    ModelBench bench(Api::native);
    bench.server.lists["/api/tags"] = {R"({"models":[{"name":"a\nb"}]})"};
    int changes = 0;
    QObject::connect(bench.model.get(), &LoopbackModel::modelLineChanged, [&] { ++changes; });
    bench.model->refresh();
    ASSERT_TRUE(eventually([&] { return changes > 0; }));
    EXPECT_EQ(bench.model->modelLine(), "Ollama · a b");
}

TEST(LoopbackModel, AnswersOverlappingCallsEachWithItsOwn) {
    ModelBench bench(Api::native, {"first", "second"});
    bench.server.chat.front().delay = 50ms;
    std::vector<std::string> answers;
    for (int i = 0; i < 2; ++i)
        bench.model->respond(plainText, [&](auto reply) { answers.push_back(told(reply)); });
    ASSERT_TRUE(eventually([&] { return answers.size() == 2; }));
    EXPECT_THAT(answers, ::testing::UnorderedElementsAre("first", "second"));
}

TEST(LoopbackModel, CancelsWhatIsInFlightAndTellsItLater) {
    ModelBench bench(Api::native);
    bench.server.chat.assign(2, {.fault = Fault::silence});
    std::vector<std::string> outcomes;
    for (int i = 0; i < 2; ++i)
        bench.model->respond(plainText, [&](auto reply) { outcomes.push_back(told(reply)); });
    ASSERT_TRUE(eventually([&] { return bench.server.chats().size() == 2; }));
    bench.model->cancel();
    EXPECT_TRUE(outcomes.empty());
    ASSERT_TRUE(eventually([&] { return outcomes.size() == 2; }));
    EXPECT_THAT(outcomes, ::testing::Each("failed: cancelled"));
    bench.server.chat = {bench.server.says(word)};
    EXPECT_EQ(bench.ask(), word) << "it goes on working";
}

TEST(LoopbackModel, GoesQuietlyWithRequestsInEveryStage) {
    ModelBench bench(Api::native);
    bench.server.chat = {{.fault = Fault::silence}};
    int outcomes = 0;
    const auto count = [&](const auto&) { ++outcomes; };
    bench.model->respond(wordRequest(), count);
    ASSERT_TRUE(eventually([&] { return bench.server.chats().size() == 1; }));
    bench.model->respond(wordRequest(), count); // not yet started
    bench.model = std::make_unique<LoopbackModel>(builtIn(), bench.settings);
    for (auto& [path, reply] : bench.server.lists)
        reply.fault = Fault::silence;
    const auto before = bench.server.http().requests.size();
    bench.model->respond(wordRequest(), count); // looking for a server
    ASSERT_TRUE(eventually([&] { return bench.server.http().requests.size() > before; }));
    bench.model.reset();
    handleEvents();
    EXPECT_EQ(outcomes, 0);
}

TEST(LoopbackModel, MayBeAskedAgainOrEndedFromInsideAnAnswer) {
    auto model = std::make_unique<LoopbackModel>(builtIn(), patient({1}));
    bool ended = false;
    model->respond(wordRequest(), [&](const auto&) {
        model->respond(wordRequest(), [&](const auto&) {
            model.reset();
            ended = true;
        });
    });
    EXPECT_TRUE(eventually([&] { return ended; }));
    handleEvents();
}

} // namespace
} // namespace kelvo::test
