#pragma once

#include "platform/modelserver/LoopbackModel.h"
#include "support/EventLoopEnvironment.h"
#include "support/ScriptedModelServer.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kelvo::test {

using Reply = ScriptedHttpServer::Reply;
using Fault = Reply::Fault;
using Api = ScriptedModelServer::Api;

inline constexpr const char* word = R"({"word":"yes"})";

/// Generous bounds: a test that comes near one has failed.
inline LoopbackModel::Settings patient(std::vector<std::uint16_t> ports) {
    LoopbackModel::Settings settings;
    settings.ports = std::move(ports);
    settings.discovery = std::chrono::seconds(30);
    settings.loadingPoll = std::chrono::milliseconds(1);
    return settings;
}

inline LoopbackModel::BuiltIn builtIn() {
    return [](const ModelRequest&) -> tl::expected<std::string, ModelFailure> {
        return "built-in answer";
    };
}

/// The request of a record with one field.
inline ModelRequest wordRequest() {
    return {.instructions = "Be brief.",
            .prompt = "One word?",
            .recordName = "Word",
            .schema = R"({"type":"object","properties":{"word":{"type":"string"}},)"
                      R"("required":["word"],"additionalProperties":false})"};
}

/// The answer, or "failed: " and the description.
inline std::string told(const tl::expected<std::string, ModelFailure>& reply) {
    return reply ? *reply : "failed: " + reply.error().description;
}

/// Asks and waits for what is told.
inline std::string asked(LanguageModel& model, const ModelRequest& request = wordRequest()) {
    std::optional<std::string> outcome;
    model.respond(request, [&](auto reply) { outcome = told(reply); });
    EXPECT_FALSE(outcome.has_value()) << "the outcome came inside the call";
    EXPECT_TRUE(eventually([&] { return outcome.has_value(); }));
    return outcome.value_or("no outcome");
}

/// A scripted server and the model that finds it.
struct ModelBench {
    explicit ModelBench(Api api, std::initializer_list<const char*> contents = {},
                        const std::function<void(LoopbackModel::Settings&)>& change = {})
        : server(api), settings(patient({server.port()})) {
        for (const char* content : contents)
            server.chat.push_back(server.says(content));
        if (change) change(settings);
        model = std::make_unique<LoopbackModel>(builtIn(), settings);
    }
    std::string ask(const ModelRequest& request = wordRequest()) const {
        return asked(*model, request);
    }

    ScriptedModelServer server;
    LoopbackModel::Settings settings;
    std::unique_ptr<LoopbackModel> model;
};

} // namespace kelvo::test
