#pragma once

#include <tl/expected.hpp>

#include <functional>
#include <optional>
#include <string>

namespace kelvo {

struct ModelRequest {
    std::string instructions;
    std::string prompt;
    std::string recordName;              ///< the generable record's name; empty for plain text
    std::optional<std::string> schema{}; ///< its JSON Schema; none asks for plain text
};

struct ModelFailure {
    std::string description;
};

/// The language model on this machine.
class LanguageModel {
public:
    /// The reply's text (a JSON document where a schema was given) or why there is none.
    using Done = std::function<void(tl::expected<std::string, ModelFailure>)>;

    virtual ~LanguageModel() = default;

    /// The interface level that the model layer implements.
    virtual int osMajorVersion() const = 0;

    /// None when the model can be asked now, otherwise the reason why not.
    virtual std::optional<std::string> unavailableReason() = 0;

    /// Sends one prompt in a session of its own. `done` is called exactly once, later, on the
    /// engine's thread, and never from inside this call.
    virtual void respond(const ModelRequest& request, Done done) = 0;

    /// Gives up on every request that is still to be answered; each fails, later.
    virtual void cancel() = 0;
};

} // namespace kelvo
