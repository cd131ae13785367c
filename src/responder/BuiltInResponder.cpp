#include "responder/BuiltInResponder.h"

#include "base/Text.h"
#include "responder/AssistantReplies.h"
#include "responder/MappingReply.h"
#include "responder/PolicyDraft.h"

#include <optional>
#include <utility>

namespace kelvo {

BuiltInResponder::BuiltInResponder(std::function<GroundTexts()> ground)
    : ground_(std::move(ground)) {
}

tl::expected<std::string, ModelFailure>
BuiltInResponder::respond(const ModelRequest& request) const {
    const std::string prompt = toValidUtf8(request.prompt);
    std::optional<std::string> reply;
    if (request.recordName == "EvidenceMapping") {
        reply = mappingReply(stems_, ground_(), prompt);
    } else if (request.recordName == "GeneratedAssistantReply") {
        reply = assistantReply(stems_, prompt);
    } else if (request.recordName == "SOCReply") {
        reply = socReply(stems_, ground_(), prompt);
    } else if (request.recordName == "GeneratedGraph") {
        // A structure cannot be read from words alone; none is better than one made up.
        reply = R"({"nodes":[],"bonds":[]})";
    } else if (request.recordName.empty()) {
        reply = draftPolicy(prompt);
    }
    if (!reply) {
        return tl::unexpected(ModelFailure{"the built-in responder does not answer this request"});
    }
    return std::move(*reply);
}

} // namespace kelvo
