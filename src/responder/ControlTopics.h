#pragma once

#include <span>
#include <string_view>

namespace kelvo {

/// One subject that criteria are about, with the words in which documents speak of it. The table is
/// vocabulary, not facts: it only helps to recognise what a document is about.
struct ControlTopic {
    std::string_view name;     ///< in plain words
    std::string_view family;   ///< the control family that it belongs to, "CC6"
    std::string_view keys;     ///< words of a criterion id that name it, separated by spaces
    std::string_view strong;   ///< phrases that hardly occur elsewhere, separated by commas
    std::string_view ordinary; ///< phrases that also occur elsewhere, separated by commas
};

std::span<const ControlTopic> controlTopics();

} // namespace kelvo
