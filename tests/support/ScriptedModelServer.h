#pragma once

#include "base/Json.h"
#include "support/ScriptedHttpServer.h"

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kelvo::test {

/// A model server's API with scripted chat replies, in the order in which they are asked for.
class ScriptedModelServer {
public:
    using Reply = ScriptedHttpServer::Reply;
    using Request = ScriptedHttpServer::Request;
    enum class Api { native, openAi };

    explicit ScriptedModelServer(Api api)
        : api_(api), http_([this](const Request& request) { return reply(request); }) {
        if (api == Api::native) {
            lists["/api/version"] = {R"({"version":"0.9.1"})"};
            lists["/api/tags"] = {R"({"models":[{"name":"tiny:1b"}]})"};
            lists["/api/ps"] = {R"({"models":[]})"};
        } else {
            lists["/v1/models"] = {R"({"data":[{"id":"tiny","owned_by":"llamacpp"}]})"};
        }
    }

    /// The whole HTTP reply to a chat that answers `content`, in the shape of the server's API.
    Reply says(const std::string& content) const {
        Json body;
        if (api_ == Api::native) {
            body = {{"message", {{"role", "assistant"}, {"content", content}}},
                    {"done", true},
                    {"done_reason", "stop"},
                    {"prompt_eval_count", 400}};
        } else {
            body = {
                {"choices", {{{"message", {{"content", content}}}, {"finish_reason", "stop"}}}}};
        }
        return {.body = body.dump()};
    }

    std::uint16_t port() const { return http_.port(); }
    ScriptedHttpServer& http() { return http_; }

    /// The bodies of the chat requests so far.
    std::vector<Json> chats() const {
        std::vector<Json> bodies;
        for (const Request& request : http_.requests) {
            if (request.method == "POST") bodies.push_back(Json::parse(request.body));
        }
        return bodies;
    }

    std::deque<Reply> chat;             ///< what the coming chat requests are answered with
    std::map<std::string, Reply> lists; ///< what GET requests are answered with, by path

private:
    Reply reply(const Request& request) {
        if (request.method == "GET") {
            const auto found = lists.find(request.path);
            return found == lists.end() ? Reply{.body = "not found", .status = 404} : found->second;
        }
        const std::string path = api_ == Api::native ? "/api/chat" : "/v1/chat/completions";
        if (request.path != path || chat.empty()) return {.body = "unexpected", .status = 500};
        Reply next = std::move(chat.front());
        chat.pop_front();
        return next;
    }

    Api api_;
    ScriptedHttpServer http_;
};

} // namespace kelvo::test
