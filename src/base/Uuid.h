#pragma once

#include <string>
#include <string_view>

namespace kelvo {

/// A random UUID (RFC 4122, version 4) in its 36-character upper-case form.
std::string randomUuid();

/// True for the 36-character hyphenated form, in either letter case.
bool isUuid(std::string_view text);

} // namespace kelvo
