#pragma once

#include "ports/LanguageModel.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// The assistant's answer and its action token, both as the model gave them.
struct AssistantReply {
    std::string answer;
    std::string action;

    bool operator==(const AssistantReply&) const = default;
};

namespace Assistant {

/// Asks the assistant, grounded only in `context`. None when the model is unavailable or fails.
/// `done` is called once; from inside this call only where the model is unavailable.
void ask(LanguageModel& model, const std::string& question, const std::string& context,
         std::function<void(std::optional<AssistantReply>)> done);

} // namespace Assistant
} // namespace kelvo
