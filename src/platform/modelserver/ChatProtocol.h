#pragma once

#include "ports/LanguageModel.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// A model server on a loopback port.
struct ModelServer {
    enum class Api {
        native, ///< POST /api/chat, which takes the context size
        openAi  ///< POST /v1/chat/completions
    };
    std::uint16_t port = 0;
    Api api = Api::openAi;
    std::string name{};   ///< what runs there, "Ollama"; the port where it does not say
    std::string model{};  ///< empty while it is loading
    bool loading = false; ///< it answers, but not yet with a model
};

/// How one attempt at a request is put.
struct ChatForm {
    enum class Structure {
        schema, ///< the server is asked to hold the reply to the record's schema
        object  ///< the server is asked for any JSON object
    };
    Structure structure = Structure::schema;
    bool thinkingOff = true; ///< the native API's switch; the other has none
};

/// The server and its model in one line for the window, "Ollama · llama3.2:3b". Both come from the
/// server and are bounded, but they are its text: show them as plain text.
std::string shownLine(const ModelServer& server);

/// The path of the server's chat call.
std::string_view chatPath(const ModelServer& server);

/// The JSON body of one attempt. The schema's text stands in the prompt too, because servers drop
/// a constraint silently when they cannot keep it.
std::string chatBody(const ModelServer& server, const ModelRequest& request, const ChatForm& form);

/// What a chat reply says.
struct ChatAnswer {
    enum class Kind {
        text,
        loading,          ///< the model is not loaded yet: ask again
        structureRefused, ///< the server does not take this response format
        thinkingRefused,  ///< the server does not take the thinking switch
        modelGone,        ///< the model is not there any more
        failed
    };
    Kind kind = Kind::failed;
    std::string text{}; ///< the reply's text, or why there is none
};

ChatAnswer chatAnswer(const ModelServer& server, const ModelRequest& request, const ChatForm& form,
                      int status, std::string_view body);

/// Reads GET /api/version and GET /api/tags with GET /api/ps of the native API: the loaded model,
/// otherwise the first on this machine. None where there is none; models that run elsewhere
/// ("remote_host", "remote_model") and embedding models are no models here.
bool isNativeVersion(std::string_view body);
std::optional<std::string> nativeModel(std::string_view tags, std::string_view loaded);

/// Reads GET /v1/models: the first model and, where it tells, who serves it.
std::optional<ModelServer> openAiServer(std::string_view models);

/// Reads GET /api/v0/models, which one server has beside /v1/models: the loaded language model,
/// otherwise the first. None for another server.
std::optional<std::string> studioModel(std::string_view models);

/// True for the reply of a server that is still loading its model.
bool isLoading(int status, std::string_view body);

} // namespace kelvo
