#pragma once

#include "support/EventLoopEnvironment.h"
#include "support/ScriptedModelServer.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/LoopbackModel.h"

namespace kelvo::test {

using Reply = ScriptedHttpServer::Reply;
using Fault = Reply::Fault;
using Api = ScriptedModelServer::Api;

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

/// Asks and waits for the outcome.
inline tl::expected<std::string, ModelFailure> asked(LanguageModel& model,
                                                     const ModelRequest& request) {
    std::optional<tl::expected<std::string, ModelFailure>> outcome;
    model.respond(request, [&](auto reply) { outcome = std::move(reply); });
    EXPECT_FALSE(outcome.has_value()) << "the outcome came inside the call";
    EXPECT_TRUE(eventually([&] { return outcome.has_value(); }));
    return outcome.value_or(tl::unexpected(ModelFailure{"no outcome"}));
}

} // namespace kelvo::test
