#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// Checks a reply against the part of JSON Schema that the generable records use: type (object,
/// array, string, number), properties, required, items. None when it fits, otherwise what does not;
/// also where either text is no JSON. Properties beyond the schema's are let pass.
std::optional<std::string> schemaMisfit(std::string_view document, std::string_view schema);

} // namespace kelvo
