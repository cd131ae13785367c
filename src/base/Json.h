#pragma once

#include <nlohmann/json.hpp>
#include <tl/expected.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// A JSON value. Objects keep their keys sorted by bytes, which every format of this system wants.
using Json = nlohmann::json;

/// The deepest nesting of arrays and objects that is read or written.
inline constexpr std::size_t jsonDepthLimit = 256;

enum class JsonLayout {
    compact, ///< no white space at all: payloads and event lines
    pretty,  ///< one member a line, two spaces a level, "key" : value: record files
};

/// Writes `value` in the one form that hashed payloads, record files and event lines share: keys
/// sorted, "/" written "\/", non-ASCII characters as raw UTF-8, numbers as the shortest text that
/// reads back to the same double, whole numbers without a fraction.
///
/// None when the value cannot be held by JSON: a number that is not finite, a string that is not
/// UTF-8, or nesting beyond `jsonDepthLimit`.
std::optional<std::string> writeJson(const Json& value, JsonLayout layout = JsonLayout::compact);

/// Reads one JSON document (strict grammar, strict UTF-8; of repeated keys the last one counts).
/// The error says what is wrong and at which byte.
tl::expected<Json, std::string> parseJson(std::string_view text);

} // namespace kelvo
