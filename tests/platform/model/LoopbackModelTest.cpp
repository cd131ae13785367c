#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelBench.h"

namespace kelvo::test {
namespace {

using ::testing::HasSubstr;
using namespace std::chrono_literals;

const auto* const environment = ::testing::AddGlobalTestEnvironment(new EventLoopEnvironment);

constexpr const char* word = R"({"word":"yes"})";

TEST(LoopbackModel, IsAlwaysThereAndOfTheInterfaceLevelThatItImplements) {
    LoopbackModel model(builtIn(), patient({}));
    EXPECT_EQ(model.osMajorVersion(), 26);
    EXPECT_EQ(model.unavailableReason(), std::nullopt);
}

TEST(LoopbackModel, LooksWherePeopleRunServersAndOnlyBriefly) {
    const LoopbackModel::Settings settings;
    EXPECT_EQ(settings.ports, (std::vector<std::uint16_t>{11434, 8080, 1234, 8000}));
    EXPECT_LE(settings.discovery, 300ms);
    EXPECT_GE(settings.firstByte, 2min);
    EXPECT_GE(settings.total, settings.firstByte);
}

TEST(LoopbackModel, SendsTheNativeCallWithSchemaAndContextSize) {
    ScriptedModelServer server(Api::native);
    server.chat = {server.says(word)};
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_EQ(asked(model, wordRequest()).value(), word);
    const Json chat = server.chats().at(0);
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
}

TEST(LoopbackModel, SendsTheSharedCallWithAStrictSchema) {
    ScriptedModelServer server(Api::openAi);
    server.chat = {server.says(word)};
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_EQ(asked(model, wordRequest()).value(), word);
    const Json chat = server.chats().at(0);
    EXPECT_EQ(chat.at("response_format"),
              (Json{{"type", "json_schema"},
                    {"json_schema",
                     {{"name", "Word"},
                      {"strict", true},
                      {"schema", Json::parse(*wordRequest().schema)}}}}));
    EXPECT_FALSE(chat.contains("think"));
    EXPECT_FALSE(chat.contains("max_tokens"));
}

TEST(LoopbackModel, AsksForPlainTextWithoutAnyFormat) {
    for (const Api api : {Api::native, Api::openAi}) {
        ScriptedModelServer server(api);
        server.chat = {server.says("A policy.")};
        LoopbackModel model(builtIn(), patient({server.port()}));
        EXPECT_EQ(asked(model, {"Write.", "Now.", "", {}}).value(), "A policy.");
        const Json chat = server.chats().at(0);
        EXPECT_FALSE(chat.contains("format"));
        EXPECT_FALSE(chat.contains("response_format"));
        EXPECT_EQ(chat.at("messages").at(1).at("content"), "Now.");
    }
}

TEST(LoopbackModel, KeepsThePropertiesInTheRecordsOrder) {
    ScriptedModelServer server(Api::native);
    server.chat = {server.says("{}"), server.says("{}")};
    LoopbackModel model(builtIn(), patient({server.port()}));
    ModelRequest request = wordRequest();
    request.schema =
        R"({"type":"object","properties":{"z":{"type":"string"},"a":{"type":"string"}},)"
        R"("required":[]})";
    EXPECT_TRUE(asked(model, request).has_value());
    const std::string body = server.http().requests.back().body;
    const auto format = body.find("\"format\"");
    EXPECT_LT(body.find("\"z\"", format), body.find("\"a\"", format));
}

TEST(LoopbackModel, AsksForALargerContextForALongPrompt) {
    ScriptedModelServer server(Api::native);
    server.chat = {server.says("ok")};
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_TRUE(asked(model, {"", std::string(30'000, 'x'), "", {}}).has_value());
    EXPECT_GE(server.chats().at(0).at("options").at("num_ctx"), 15'000);
}

struct Case {
    const char* name;
    Api api;
    Reply reply;
    const char* failure; ///< a part of the description; empty where the call succeeds
};

std::ostream& operator<<(std::ostream& out, const Case& each) {
    return out << each.name;
}

class LoopbackModelReplies : public ::testing::TestWithParam<Case> {};

TEST_P(LoopbackModelReplies, AreTakenOrRefusedForWhatTheyAre) {
    ScriptedModelServer server(GetParam().api);
    server.chat.assign(8, GetParam().reply); // Qt sends again where a connection drops at once
    LoopbackModel model(builtIn(), patient({server.port()}));
    const auto outcome = asked(model, {"Write.", "Now.", "", {}});
    if (*GetParam().failure == '\0') {
        EXPECT_TRUE(outcome.has_value()) << outcome.error().description;
    } else {
        ASSERT_FALSE(outcome.has_value()) << *outcome;
        EXPECT_THAT(outcome.error().description, HasSubstr(GetParam().failure));
    }
}

std::string nativeChat(const std::string& rest) {
    return R"({"message":{"content":"text"},)" + rest + "}";
}

std::string openAiChat(const std::string& choice) {
    return R"({"choices":[)" + choice + "]}";
}

const std::string megabytes(3 << 20, ' ');

INSTANTIATE_TEST_SUITE_P(
    Replies, LoopbackModelReplies,
    ::testing::Values(
        Case{"good", Api::native, {nativeChat(R"("done":true)")}, ""},
        Case{"slow", Api::native, {.body = nativeChat(R"("done":true)"), .delay = 100ms}, ""},
        Case{"without a length",
             Api::openAi,
             {.body = openAiChat(R"({"message":{"content":"t"}})"), .fault = Fault::unannounced},
             ""},
        Case{"dropped", Api::native, {.fault = Fault::drop}, "broke"},
        Case{"truncated",
             Api::openAi,
             {.body = openAiChat(R"({"message":{"content":"t"}})"), .fault = Fault::truncated},
             "broke"},
        Case{"no HTTP", Api::native, {.body = "hello\r\n\r\n", .fault = Fault::notHttp}, "broke"},
        Case{"no JSON", Api::openAi, {"<html>hello</html>"}, "no JSON"},
        Case{"broken JSON", Api::native, {R"({"message":{"content":"te)"}, "no JSON"},
        Case{"JSON of another kind", Api::openAi, {"[1]"}, "no answer"},
        Case{"content of another type",
             Api::openAi,
             {openAiChat(R"({"message":{"content":7}})")},
             "no answer"},
        Case{"content of another type, native",
             Api::native,
             {R"({"message":{"content":["t"]},"done":true})"},
             "no answer"},
        Case{"no choice", Api::openAi, {openAiChat("")}, "no answer"},
        Case{"not done", Api::native, {nativeChat(R"("done":false)")}, "not whole"},
        Case{"cut off", Api::native, {nativeChat(R"("done":true,"done_reason":"length")")}, "cut"},
        Case{"cut off, shared",
             Api::openAi,
             {openAiChat(R"({"message":{"content":"t"},"finish_reason":"length"})")},
             "cut"},
        Case{"a prompt that filled the context",
             Api::native,
             {nativeChat(R"("done":true,"prompt_eval_count":8192)")},
             "longer than"},
        Case{"a refusal",
             Api::openAi,
             {openAiChat(R"({"message":{"content":null,"refusal":"I will not"}})")},
             "I will not"},
        Case{"an error",
             Api::native,
             {.body = R"({"error":"out of memory"})", .status = 500},
             "out of memory"},
        Case{"an error with status 200", Api::native, {R"({"error":"odd"})"}, "odd"},
        Case{"a full queue",
             Api::native,
             {.body = R"({"error":"server busy"})", .status = 503},
             "busy"},
        Case{"a prompt beyond the context",
             Api::openAi,
             {.body = R"({"error":{"message":"too long","type":"exceed_context_size_error"}})",
              .status = 400},
             "exceed_context_size"},
        Case{"oversized, announced", Api::openAi, {megabytes}, "too long"},
        Case{"oversized, not announced",
             Api::native,
             {.body = megabytes, .fault = Fault::unannounced},
             "too long"}),
    [](const auto& each) {
        std::string name = each.param.name;
        std::erase_if(name, [](char c) { return c == ' ' || c == ','; });
        return name;
    });

TEST(LoopbackModel, FallsBackToAnyObjectWhereASchemaIsRefused) {
    for (const Api api : {Api::native, Api::openAi}) {
        ScriptedModelServer server(api);
        server.chat = {
            {.body = R"({"error":{"message":"json_schema unsupported"}})", .status = 400},
            server.says(word),
            server.says(word)};
        LoopbackModel model(builtIn(), patient({server.port()}));
        EXPECT_EQ(asked(model, wordRequest()).value(), word);
        EXPECT_EQ(asked(model, wordRequest()).value(), word);
        // The second call asks at once for what the server takes.
        const auto chats = server.chats();
        ASSERT_EQ(chats.size(), 3u);
        for (const std::size_t i : {std::size_t{1}, std::size_t{2}}) {
            if (api == Api::native) {
                EXPECT_EQ(chats[i].at("format"), "json");
            } else {
                EXPECT_EQ(chats[i].at("response_format"), (Json{{"type", "json_object"}}));
            }
            EXPECT_THAT(chats[i].at("messages").at(1).at("content").get<std::string>(),
                        HasSubstr(*wordRequest().schema));
        }
    }
}

TEST(LoopbackModel, GivesUpWhereNoFormatIsTaken) {
    ScriptedModelServer server(Api::openAi);
    server.chat.assign(5, {.body = R"({"error":{"message":"no formats here"}})", .status = 400});
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_THAT(asked(model, wordRequest()).error().description, HasSubstr("no formats here"));
    EXPECT_EQ(server.chats().size(), 2u);
}

TEST(LoopbackModel, AsksOnceMoreWithThinkingWhereTheAnswerDoesNotFit) {
    ScriptedModelServer server(Api::native);
    server.chat = {server.says("Well, it depends."), server.says(word)};
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_EQ(asked(model, wordRequest()).value(), word);
    EXPECT_TRUE(server.chats().at(0).contains("think"));
    EXPECT_FALSE(server.chats().at(1).contains("think"));
}

TEST(LoopbackModel, DropsTheThinkingSwitchWhereItIsRefused) {
    ScriptedModelServer server(Api::native);
    server.chat = {{.body = R"({"error":"\"tiny:1b\" does not support thinking"})", .status = 400},
                   server.says(word)};
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_EQ(asked(model, wordRequest()).value(), word);
    EXPECT_FALSE(server.chats().at(1).contains("think"));
    EXPECT_TRUE(server.chats().at(1).at("format").is_object());
}

TEST(LoopbackModel, HandsOnAnAnswerThatStillDoesNotFitForTheReaderToRefuse) {
    ScriptedModelServer server(Api::native);
    server.chat = {server.says("{}"), server.says("[]")};
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_EQ(asked(model, wordRequest()).value(), "[]");
}

TEST(LoopbackModel, WaitsForAModelThatIsStillLoading) {
    const Reply loading{.body = R"({"error":{"code":503,"message":"Loading model"}})",
                        .status = 503};
    ScriptedModelServer server(Api::openAi);
    const Reply ready = server.lists["/v1/models"];
    server.lists["/v1/models"] = loading;
    LoopbackModel model(builtIn(), patient({server.port()}));
    std::optional<tl::expected<std::string, ModelFailure>> outcome;
    model.respond(wordRequest(), [&](auto reply) { outcome = std::move(reply); });
    ASSERT_TRUE(eventually([&] { return server.http().requests.size() > 12; }));
    EXPECT_FALSE(outcome.has_value());
    server.lists["/v1/models"] = ready;
    server.chat = {loading, server.says(word)}; // and once more at the call itself
    ASSERT_TRUE(eventually([&] { return outcome.has_value(); }));
    EXPECT_EQ(outcome->value(), word);
}

TEST(LoopbackModel, DoesNotWaitForALoadingModelForEver) {
    ScriptedModelServer server(Api::openAi);
    server.lists["/v1/models"] = {.body = R"({"error":{"message":"Loading model"}})",
                                  .status = 503};
    auto settings = patient({server.port()});
    settings.firstByte = 20ms;
    LoopbackModel model(builtIn(), settings);
    EXPECT_THAT(asked(model, wordRequest()).error().description, HasSubstr("loading"));
}

TEST(LoopbackModel, StopsWaitingForAServerThatSaysNothing) {
    for (const bool total : {false, true}) {
        ScriptedModelServer server(Api::native);
        server.chat = {{.fault = Fault::silence}};
        auto settings = patient({server.port()});
        (total ? settings.total : settings.firstByte) = 20ms;
        LoopbackModel model(builtIn(), settings);
        EXPECT_THAT(asked(model, wordRequest()).error().description, HasSubstr("in time"));
    }
}

TEST(LoopbackModel, AnswersByItselfWhereNoServerRuns) {
    LoopbackModel model(builtIn(), patient({1}));
    EXPECT_EQ(asked(model, wordRequest()).value(), "built-in answer");
    EXPECT_EQ(model.modelLine(), "built-in");
}

TEST(LoopbackModel, LooksAgainWhenACallFindsNothing) {
    auto first = std::make_unique<ScriptedModelServer>(Api::native);
    ScriptedModelServer second(Api::openAi);
    first->chat = {first->says(word)};
    second.chat = {second.says(R"({"word":"second"})")};
    LoopbackModel model(builtIn(), patient({first->port(), second.port()}));
    EXPECT_EQ(asked(model, wordRequest()).value(), word);
    EXPECT_EQ(model.modelLine(), "Ollama · tiny:1b");
    first.reset();
    EXPECT_EQ(asked(model, wordRequest()).value(), R"({"word":"second"})");
    EXPECT_EQ(model.modelLine(), "llama.cpp · tiny");
    second.http().stop();
    EXPECT_EQ(asked(model, wordRequest()).value(), "built-in answer");
    EXPECT_EQ(model.modelLine(), "built-in");
}

TEST(LoopbackModel, LooksAgainWhereTheModelIsGone) {
    ScriptedModelServer server(Api::native);
    server.chat = {{.body = R"({"error":"model 'tiny:1b' not found"})", .status = 404},
                   server.says(word)};
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_EQ(asked(model, wordRequest()).value(), word);
}

TEST(LoopbackModel, DoesNotLetTheBuiltInResponderStandInForABadAnswer) {
    ScriptedModelServer server(Api::native);
    server.chat = {{.body = R"({"error":"out of memory"})", .status = 500}};
    LoopbackModel model(builtIn(), patient({server.port()}));
    EXPECT_FALSE(asked(model, wordRequest()).has_value());
}

TEST(LoopbackModel, TellsTheWindowWhoAnswersBeforeTheFirstCall) {
    ScriptedModelServer server(Api::native);
    server.lists["/api/tags"] = {R"({"models":[{"name":"a\nb"}]})"};
    LoopbackModel model(builtIn(), patient({server.port()}));
    int changes = 0;
    QObject::connect(&model, &LoopbackModel::modelLineChanged, &model, [&] { ++changes; });
    model.refresh();
    ASSERT_TRUE(eventually([&] { return changes > 0; }));
    EXPECT_EQ(model.modelLine(), "Ollama · a b");
}

TEST(LoopbackModel, AnswersOverlappingCallsEachWithItsOwn) {
    ScriptedModelServer server(Api::native);
    Reply slow = server.says("first");
    slow.delay = 50ms;
    server.chat = {slow, server.says("second")};
    LoopbackModel model(builtIn(), patient({server.port()}));
    std::vector<std::string> answers;
    for (int i = 0; i < 2; ++i)
        model.respond({"", "", "", {}},
                      [&](auto reply) { answers.push_back(reply.value_or("?")); });
    ASSERT_TRUE(eventually([&] { return answers.size() == 2; }));
    EXPECT_THAT(answers, ::testing::UnorderedElementsAre("first", "second"));
}

TEST(LoopbackModel, CancelsWhatIsInFlightAndTellsItLater) {
    ScriptedModelServer server(Api::native);
    server.chat.assign(2, {.fault = Fault::silence});
    LoopbackModel model(builtIn(), patient({server.port()}));
    std::vector<std::string> failures;
    const auto note = [&](const tl::expected<std::string, ModelFailure>& reply) {
        failures.push_back(reply ? "answered" : reply.error().description);
    };
    model.respond(wordRequest(), note);
    model.respond(wordRequest(), note);
    ASSERT_TRUE(eventually([&] { return server.chats().size() == 2; }));
    model.cancel();
    EXPECT_TRUE(failures.empty());
    ASSERT_TRUE(eventually([&] { return failures.size() == 2; }));
    EXPECT_THAT(failures, ::testing::Each("cancelled"));
    // It goes on working.
    server.chat = {server.says(word)};
    EXPECT_EQ(asked(model, wordRequest()).value(), word);
}

TEST(LoopbackModel, GoesQuietlyWithRequestsInEveryStage) {
    ScriptedModelServer server(Api::native);
    server.chat = {{.fault = Fault::silence}};
    int told = 0;
    const auto count = [&](const auto&) { ++told; };
    auto model = std::make_unique<LoopbackModel>(builtIn(), patient({server.port()}));
    model->respond(wordRequest(), count);
    ASSERT_TRUE(eventually([&] { return server.chats().size() == 1; }));
    model->respond(wordRequest(), count); // not yet started
    model.reset();

    model = std::make_unique<LoopbackModel>(builtIn(), patient({server.port()}));
    for (auto& [path, reply] : server.lists)
        reply.fault = Fault::silence;
    const auto before = server.http().requests.size();
    model->respond(wordRequest(), count); // looking for a server
    ASSERT_TRUE(eventually([&] { return server.http().requests.size() > before; }));
    model.reset();
    handleEvents();
    EXPECT_EQ(told, 0);
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
