#include "intelligence/ReplyText.h"

#include "base/Text.h"

namespace kelvo {

std::string_view withoutThinking(std::string_view reply) {
    constexpr std::string_view open = "<think>";
    constexpr std::string_view close = "</think>";
    reply = trimmed(reply);
    const auto end = reply.find(close);
    const bool opened = reply.starts_with(open);
    // A block that never ends holds no answer behind it.
    if (end == std::string_view::npos) return opened ? std::string_view() : reply;
    // Some servers open the block in the prompt, so that the reply only ends it. In the middle of
    // a JSON document it is data.
    const bool onlyEnded = !reply.starts_with('{') && reply.substr(0, end).find(open) == reply.npos;
    if (!opened && !onlyEnded) return reply;
    return trimmed(reply.substr(end + close.size()));
}

std::string_view jsonBody(std::string_view reply) {
    constexpr std::string_view fence = "```";
    reply = withoutThinking(reply);
    if (reply.size() < 2 * fence.size() || !reply.starts_with(fence) || !reply.ends_with(fence))
        return reply;
    reply.remove_prefix(fence.size());
    reply.remove_suffix(fence.size());
    // The word behind the opening fence names the language.
    const auto isWord = [](char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; };
    while (!reply.empty() && isWord(reply.front()))
        reply.remove_prefix(1);
    return trimmed(reply);
}

} // namespace kelvo
