#pragma once

#include "responder/GroundTexts.h"
#include "responder/Stems.h"

#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// Answers an assistant prompt ("Current state:", "User:") with a GeneratedAssistantReply as JSON:
/// readiness, gaps, the owner and the next step are told from the state in the prompt and nothing
/// else; a request to do one of the known things becomes its action token. What the state does not
/// say is answered by saying so. None for a prompt of another form.
std::optional<std::string> assistantReply(const Stems& stems, std::string_view prompt);

/// Answers a free question with a SOCReply as JSON: what a control family asks for, in the
/// family's own texts, or that there is no answer. It never proposes a graph.
std::string socReply(const Stems& stems, const GroundTexts& ground, std::string_view question);

} // namespace kelvo
