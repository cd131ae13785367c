#pragma once

#include <string_view>

namespace kelvo {

/// A model's reply without what some servers leave around it: a leading thinking block
/// ("<think>…</think>", also where only its end arrives), and white space at both ends. Empty where
/// the block never ends. The view lies inside `reply`.
std::string_view withoutThinking(std::string_view reply);

/// The JSON document of a reply: `withoutThinking`, and taken out of a code fence where the whole
/// reply is one.
std::string_view jsonBody(std::string_view reply);

} // namespace kelvo
