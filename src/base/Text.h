#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// True for well-formed UTF-8 (no surrogates, no overlong forms).
bool isValidUtf8(std::string_view text);

/// The text with every ill-formed sequence replaced by U+FFFD, so that it can be shown and written.
std::string toValidUtf8(std::string_view text);

/// The text with every character made visible that would break the line, steer a terminal or turn
/// the reading direction: C0 controls and DEL as their control pictures ("␊", "␛"), others (C1,
/// line and paragraph separators, directional marks and overrides) as "<U+202E>".
std::string withControlsShown(std::string_view text);

/// The number of user-perceived characters (extended grapheme clusters, UAX #29). Each byte that is
/// not UTF-8 counts as one.
std::size_t characterCount(std::string_view text);

/// The first `count` user-perceived characters, or the whole text where it has fewer.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// Without white space and line breaks (Unicode White_Space) at both ends.
std::string_view trimmed(std::string_view text);

/// Without spaces and tabs at both ends; line breaks stay.
std::string_view trimmedSpacesAndTabs(std::string_view text);

/// Lower case by Unicode's simple mapping, whatever the locale. Ill-formed bytes stay as they are.
std::string lowerCased(std::string_view text);

/// Equal without regard to letter case, by `lowerCased`.
bool equalIgnoringCase(std::string_view a, std::string_view b);

/// The pieces with `separator` between them.
std::string joined(const std::vector<std::string>& pieces, std::string_view separator);

/// As printf's "%.<decimals>f" in the C locale; not-a-number reads "nan" without a sign.
std::string fixed(double value, int decimals);

/// A share as a percentage with one decimal: 0.423 reads "42.3%".
std::string percent(double share);

} // namespace kelvo
