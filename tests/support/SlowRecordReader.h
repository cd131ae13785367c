#pragma once

#include "base/Json.h"

#include <optional>
#include <string>
#include <string_view>

namespace kelvo::support {

/// The criterion that a sealed closing names, by the general reader and without any shortcut.
inline std::optional<std::string> closedBySlowReading(std::string_view text) {
    const auto document = parseJson(text);
    if (!document || !document->is_object()) return std::nullopt;
    const Json nothing;
    const auto member = [&](const char* key) -> const Json& {
        const auto found = document->find(key);
        return found == document->end() ? nothing : *found;
    };
    const Json& gate = member("gate_after");
    if (member("sourceDb") != "control" || !gate.is_number() || gate.get<double>() != 1.0)
        return std::nullopt;
    const Json& root = member("evidence_root");
    const Json& criterion = member("criterion");
    if (!root.is_string() || root == "" || !criterion.is_string()) return std::nullopt;
    return criterion.get<std::string>();
}

} // namespace kelvo::support
