#pragma once

#include "intents/KelvoIntents.h"

#include <string>
#include <string_view>

namespace kelvo {

/// The longest question that is taken, in bytes of UTF-8.
inline constexpr std::size_t longestQuestion = 8192;

/// Reads a request for an intent as it comes from outside. `name` is "ask", "adopt", "run" or
/// "approve"; `parameter` is the question or the family ("CC1" to "CC9", exactly so) and must be
/// empty for the other two. A refusal is one sentence that says what is wrong.
tl::expected<Intent, std::string> readIntent(std::string_view name, std::string_view parameter);

/// One text for a request: the name, and after a colon the parameter ("adopt:CC6", "run").
/// `readIntentId` reads it back and refuses as `readIntent` does.
std::string intentId(const Intent& intent);
tl::expected<Intent, std::string> readIntentId(std::string_view id);

/// The two halves of the id.
std::string_view requestName(const Intent& intent);
std::string requestParameter(const Intent& intent);

} // namespace kelvo
