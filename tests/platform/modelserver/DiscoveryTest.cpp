#include "platform/modelserver/Discovery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelBench.h"

namespace kelvo::test {
namespace {

using namespace std::chrono_literals;

std::optional<ModelServer> discovered(const std::vector<std::uint16_t>& ports,
                                      std::chrono::milliseconds bound = 30s) {
    LoopbackAccess access;
    std::optional<std::optional<ModelServer>> result;
    Discovery discovery(access, ports, bound, [&](auto server) { result = std::move(server); });
    EXPECT_FALSE(result.has_value());
    EXPECT_TRUE(eventually([&] { return result.has_value(); }));
    return result.value_or(std::nullopt);
}

std::string line(const std::vector<std::uint16_t>& ports, std::chrono::milliseconds bound = 30s) {
    const auto server = discovered(ports, bound);
    return server ? shownLine(*server) : "none";
}

TEST(Discovery, ChoosesTheLoadedModelOrTheFirstThatRunsHere) {
    const char* const tags = "/api/tags";
    const char* const models = "/v1/models";
    using Lists = std::map<std::string, std::string>;
    const std::tuple<const char*, Api, Lists, const char*> table[] = {
        {"the usual native server", Api::native, {}, "Ollama · tiny:1b"},
        {"the usual other server", Api::openAi, {}, "llama.cpp · tiny"},
        {"a loaded model goes before the first",
         Api::native,
         {{tags, R"({"models":[{"name":"a"},{"name":"b"}]})"},
          {"/api/ps", R"({"models":[{"name":"b"}]})"}},
         "Ollama · b"},
        {"a model that runs elsewhere is refused",
         Api::native,
         {{tags, R"({"models":[{"name":"a","remote_host":"https://far"},)"
                 R"({"name":"b","remote_model":"b"},{"name":"c:120b-cloud"},{"name":"d"}]})"},
          {"/api/ps", R"({"models":[{"name":"a"}]})"}},
         "Ollama · d"},
        {"only models that run elsewhere",
         Api::native,
         {{tags, R"({"models":[{"name":"a","remote_host":"https://far"}]})"},
          {models, R"({"data":[{"id":"a","owned_by":"library"}]})"}},
         "none"},
        {"an embedding model cannot answer",
         Api::native,
         {{tags, R"({"models":[{"name":"nomic-embed-text"},{"name":"b"}]})"}},
         "Ollama · b"},
        {"no model at all", Api::native, {{tags, R"({"models":[]})"}}, "none"},
        {"a list that is none", Api::native, {{tags, R"({"models":7})"}}, "none"},
        {"no entries", Api::openAi, {{models, R"({"data":[1,null,{"id":3}]})"}}, "none"},
        {"a web server of another kind", Api::openAi, {{models, "<html></html>"}}, "none"},
        {"a server that serves another way",
         Api::openAi,
         {{models, R"({"data":[{"id":"m","owned_by":"vllm"}]})"}},
         "vLLM · m"},
        {"a studio's loaded model",
         Api::openAi,
         {{models, R"({"data":[{"id":"a"},{"id":"b"}]})"},
          {"/api/v0/models", R"({"data":[{"id":"a","type":"llm","state":"not-loaded"},)"
                             R"({"id":"e","type":"embeddings","state":"loaded"},)"
                             R"({"id":"b","type":"llm","state":"loaded"}]})"}},
         "LM Studio · b"},
    };
    for (const auto& [what, api, lists, expected] : table) {
        ScriptedModelServer server(api);
        for (const auto& [path, body] : lists)
            server.lists[path] = {body};
        EXPECT_EQ(line({server.port()}), expected) << what;
    }
}

TEST(Discovery, PrefersThePortsInTheirOrderAndAReadyServerToALoadingOne) {
    ScriptedModelServer native(Api::native);
    ScriptedModelServer other(Api::openAi);
    EXPECT_EQ(line({other.port(), native.port()}), "llama.cpp · tiny");
    EXPECT_EQ(line({1, native.port(), other.port()}), "Ollama · tiny:1b");
    other.lists["/v1/models"] = {.body = R"({"error":{"message":"Loading model"}})", .status = 503};
    EXPECT_EQ(line({other.port(), native.port()}), "Ollama · tiny:1b");
    const auto loading = discovered({other.port()});
    ASSERT_TRUE(loading.has_value());
    EXPECT_TRUE(loading->loading);
}

TEST(Discovery, WaitsNoLongerThanItsBoundForPortsThatSayNothing) {
    ScriptedHttpServer silent([](const auto&) { return Reply{.fault = Fault::silence}; });
    EXPECT_EQ(line({silent.port()}, 30ms), "none");
    // All ports are asked at the same time, so what another port said by then counts.
    ScriptedModelServer native(Api::native);
    EXPECT_EQ(line({silent.port(), native.port()}, 2s), "Ollama · tiny:1b");
}

TEST(Discovery, NamesThePortOfAnUnknownServerAndBoundsWhatItMayList) {
    ScriptedModelServer server(Api::openAi);
    server.lists["/v1/models"] = {R"({"data":[{"id":"m"}]})"};
    EXPECT_EQ(line({server.port()}), "port " + std::to_string(server.port()) + " · m");
    server.lists["/v1/models"] = {R"({"data":[{"id":")" + std::string(500, 'm') + "\"}]}"};
    EXPECT_LE(line({server.port()}).size(), 100u);
    server.lists["/v1/models"] = {std::string(3 << 20, ' ')};
    EXPECT_EQ(line({server.port()}), "none");
}

} // namespace
} // namespace kelvo::test
