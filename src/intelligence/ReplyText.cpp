#include "intelligence/ReplyText.h"

#include "base/Text.h"

namespace kelvo {

std::string_view withoutThinking(std::string_view reply) {
    constexpr std::string_view open = "<think>";
    constexpr std::string_view close = "</think>";
    reply = trimmed(reply);
    if (!reply.starts_with(open)) return reply;
    const auto end = reply.find(close);
    // A block that never ends holds no answer behind it.
    if (end == std::string_view::npos) return {};
    return trimmed(reply.substr(end + close.size()));
}

std::string_view jsonBody(std::string_view reply) {
    constexpr std::string_view fence = "```";
    reply = withoutThinking(reply);
    if (!reply.starts_with(fence) || !reply.ends_with(fence)) return reply;
    const auto firstLine = reply.find('\n');
    if (firstLine == std::string_view::npos || firstLine + fence.size() >= reply.size())
        return reply;
    reply.remove_suffix(fence.size());
    return trimmed(reply.substr(firstLine));
}

} // namespace kelvo
