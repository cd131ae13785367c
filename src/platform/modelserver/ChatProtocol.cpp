#include "platform/modelserver/ChatProtocol.h"

#include "base/Json.h"
#include "base/Text.h"

#include <algorithm>

namespace kelvo {
namespace {

constexpr std::size_t leastContext = 8192;
constexpr std::size_t mostContext = 32768;
constexpr std::size_t answerTokens = 2048;
constexpr std::size_t longestName = 80;
constexpr std::size_t longestError = 300;

using Ordered = nlohmann::ordered_json;

/// The context that a prompt and its answer need, in tokens: two bytes a token is on the safe side
/// for English, and about right for scripts of three bytes a character.
std::size_t contextTokens(std::size_t promptBytes) {
    constexpr std::size_t step = 1024;
    const std::size_t wanted = (promptBytes / 2 + answerTokens + step - 1) / step * step;
    return std::clamp(wanted, leastContext, mostContext);
}

std::string userText(const ModelRequest& request) {
    if (!request.schema) return request.prompt;
    return request.prompt +
           "\n\nReply with one JSON object and nothing else. It must match this JSON Schema:\n" +
           *request.schema;
}

Ordered messages(const ModelRequest& request) {
    return Ordered::array({{{"role", "system"}, {"content", request.instructions}},
                           {{"role", "user"}, {"content", userText(request)}}});
}

/// A member of an object that may be no object at all.
const Json* member(const Json* value, const char* key) {
    if (value == nullptr || !value->is_object()) return nullptr;
    const auto found = value->find(key);
    return found == value->end() ? nullptr : &*found;
}

std::string text(const Json* value) {
    return value != nullptr && value->is_string() ? value->get<std::string>() : std::string();
}

bool isTrue(const Json* value) {
    return value != nullptr && value->is_boolean() && value->get<bool>();
}

/// Text from a server, fit to stand in one line.
std::string oneLine(std::string_view raw, std::size_t most) {
    std::string line(firstCharacters(trimmed(raw), most));
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return line;
}

std::string errorText(const Json* reply) {
    const Json* error = member(reply, "error");
    if (error != nullptr && error->is_string()) return error->get<std::string>();
    std::string message = text(member(error, "message"));
    if (message.empty()) message = text(member(reply, "message"));
    return text(member(error, "type")).empty() ? message
                                               : message + " " + text(member(error, "type"));
}

bool mentions(const std::string& error, std::string_view word) {
    return lowerCased(error).find(word) != std::string::npos;
}

ChatAnswer failed(std::string why) {
    return {ChatAnswer::Kind::failed, std::move(why)};
}

ChatAnswer refusal(const ModelRequest& request, const ChatForm& form, int status,
                   const std::string& error) {
    using Kind = ChatAnswer::Kind;
    const std::string shown = error.empty()
                                  ? "the server answered with status " + std::to_string(status)
                                  : "the server refused: " + oneLine(error, longestError);
    if (status == 404) return {Kind::modelGone, shown};
    const bool aboutForm =
        status == 400 || status == 415 || status == 422 || status == 500 || status == 501;
    if (!aboutForm || mentions(error, "context")) return failed(shown);
    if (form.thinkingOff && mentions(error, "think")) return {Kind::thinkingRefused, shown};
    if (request.schema && form.structure == ChatForm::Structure::schema && status != 500)
        return {Kind::structureRefused, shown};
    return failed(shown);
}

ChatAnswer nativeAnswer(const ModelRequest& request, const Json& reply) {
    if (!isTrue(member(&reply, "done"))) return failed("the server's reply is not whole");
    if (text(member(&reply, "done_reason")) == "length")
        return failed("the model's answer was cut off");
    const Json* read = member(&reply, "prompt_eval_count");
    const auto given = contextTokens(request.instructions.size() + userText(request).size());
    // The prompt is cut without a word where it fills the context.
    if (read != nullptr && read->is_number_integer() &&
        read->get<std::int64_t>() >= static_cast<std::int64_t>(given))
        return failed("the prompt is longer than the model's context");
    const Json* content = member(member(&reply, "message"), "content");
    if (content == nullptr || !content->is_string())
        return failed("the server's reply holds no answer");
    return {ChatAnswer::Kind::text, content->get<std::string>()};
}

ChatAnswer openAiAnswer(const Json& reply) {
    const Json* choices = member(&reply, "choices");
    if (choices == nullptr || !choices->is_array() || choices->empty())
        return failed("the server's reply holds no answer");
    const Json* choice = &choices->front();
    const std::string reason = text(member(choice, "finish_reason"));
    if (reason == "length") return failed("the model's answer was cut off");
    const Json* message = member(choice, "message");
    const std::string refused = text(member(message, "refusal"));
    if (!refused.empty() || reason == "content_filter")
        return failed("the model refused: " + oneLine(refused, longestError));
    const Json* content = member(message, "content");
    if (content == nullptr || !content->is_string())
        return failed("the server's reply holds no answer");
    return {ChatAnswer::Kind::text, content->get<std::string>()};
}

bool isEmbedding(std::string_view name) {
    return mentions(std::string(name), "embed");
}

/// A model that the server only passes requests on for. Its field says so; older versions say it
/// in the name alone.
bool runsElsewhere(const Json& entry) {
    return !text(member(&entry, "remote_host")).empty() ||
           !text(member(&entry, "remote_model")).empty() ||
           lowerCased(text(member(&entry, "name"))).ends_with("cloud");
}

std::optional<std::string> usableName(const std::string& name) {
    if (name.empty() || isEmbedding(name)) return std::nullopt;
    return name;
}

/// The entries of a list under `key`, none where the text is something else.
Json entries(std::string_view body, const char* key) {
    const auto parsed = parseJson(body);
    if (!parsed) return Json::array();
    const Json* list = member(&*parsed, key);
    return list != nullptr && list->is_array() ? *list : Json::array();
}

} // namespace

std::string shownLine(const ModelServer& server) {
    const std::string name =
        server.name.empty() ? "port " + std::to_string(server.port) : server.name;
    const std::string model = server.model.empty() ? "loading" : oneLine(server.model, longestName);
    return name + " · " + model;
}

std::string_view chatPath(const ModelServer& server) {
    return server.api == ModelServer::Api::native ? "/api/chat" : "/v1/chat/completions";
}

std::string chatBody(const ModelServer& server, const ModelRequest& request, const ChatForm& form) {
    const bool bySchema = form.structure == ChatForm::Structure::schema;
    Ordered body = {{"model", server.model}, {"stream", false}, {"messages", messages(request)}};
    // The schema keeps the order of its properties: models fill them in that order.
    const Ordered schema =
        request.schema ? Ordered::parse(*request.schema, nullptr, false) : Ordered();
    if (server.api == ModelServer::Api::native) {
        if (form.thinkingOff) body["think"] = false;
        body["keep_alive"] = "10m";
        if (request.schema) body["format"] = bySchema ? schema : Ordered("json");
        body["options"] = {
            {"num_ctx", contextTokens(request.instructions.size() + userText(request).size())}};
    } else if (request.schema && bySchema) {
        body["response_format"] = {
            {"type", "json_schema"},
            {"json_schema", {{"name", request.recordName}, {"strict", true}, {"schema", schema}}}};
    } else if (request.schema) {
        body["response_format"] = {{"type", "json_object"}};
    }
    // Text that is not UTF-8 cannot be sent; it is shown as U+FFFD.
    return body.dump(-1, ' ', false, Ordered::error_handler_t::replace);
}

ChatAnswer chatAnswer(const ModelServer& server, const ModelRequest& request, const ChatForm& form,
                      int status, std::string_view body) {
    if (isLoading(status, body)) return {ChatAnswer::Kind::loading, "the model is still loading"};
    const auto reply = parseJson(body);
    if (status >= 400) return refusal(request, form, status, reply ? errorText(&*reply) : "");
    if (!reply) return failed("the server's reply is no JSON");
    if (member(&*reply, "error") != nullptr) return refusal(request, form, 400, errorText(&*reply));
    return server.api == ModelServer::Api::native ? nativeAnswer(request, *reply)
                                                  : openAiAnswer(*reply);
}

bool isNativeVersion(std::string_view body) {
    const auto parsed = parseJson(body);
    return parsed && !text(member(&*parsed, "version")).empty();
}

std::optional<std::string> nativeModel(std::string_view tags, std::string_view loaded) {
    std::vector<std::string> local;
    for (const Json& entry : entries(tags, "models")) {
        if (runsElsewhere(entry)) continue;
        if (auto name = usableName(text(member(&entry, "name")))) local.push_back(std::move(*name));
    }
    for (const Json& entry : entries(loaded, "models")) {
        const std::string name = text(member(&entry, "name"));
        if (std::find(local.begin(), local.end(), name) != local.end()) return name;
    }
    if (local.empty()) return std::nullopt;
    return local.front();
}

std::optional<ModelServer> openAiServer(std::string_view models) {
    for (const Json& entry : entries(models, "data")) {
        const auto id = usableName(text(member(&entry, "id")));
        if (!id) continue;
        const std::string by = text(member(&entry, "owned_by"));
        std::string name;
        if (by == "llamacpp") name = "llama.cpp";
        if (by == "vllm") name = "vLLM";
        return ModelServer{.name = std::move(name), .model = *id};
    }
    return std::nullopt;
}

std::optional<std::string> studioModel(std::string_view models) {
    std::optional<std::string> first;
    for (const Json& entry : entries(models, "data")) {
        const std::string state = text(member(&entry, "state"));
        if (state.empty() || text(member(&entry, "type")) == "embeddings") continue;
        auto id = usableName(text(member(&entry, "id")));
        if (!id) continue;
        if (state == "loaded") return id;
        if (!first) first = id;
    }
    return first;
}

bool isLoading(int status, std::string_view body) {
    if (status != 503) return false;
    const auto parsed = parseJson(body);
    return parsed && mentions(errorText(&*parsed), "loading");
}

} // namespace kelvo
