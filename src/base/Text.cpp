#include "base/Text.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace kelvo {
namespace {

/// One code point of `text` at `at`, or -1 for a byte that begins none; `length` is what it takes.
utf8proc_int32_t codePointAt(std::string_view text, std::size_t at, std::size_t& length) {
    const auto lead = static_cast<unsigned char>(text[at]);
    length = 1;
    if (lead < 0x80) return lead;
    utf8proc_int32_t code = -1;
    const auto taken = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data() + at),
                                        static_cast<utf8proc_ssize_t>(text.size() - at), &code);
    if (taken <= 0) return -1;
    length = static_cast<std::size_t>(taken);
    return code;
}

void appendCodePoint(std::string& out, utf8proc_int32_t code) {
    std::array<utf8proc_uint8_t, 4> bytes{};
    const auto length = utf8proc_encode_char(code, bytes.data());
    out.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
}

/// The White_Space property of the Unicode Character Database (PropList.txt).
bool isWhiteSpace(utf8proc_int32_t code) {
    return (code >= 0x9 && code <= 0xD) || code == 0x20 || code == 0x85 || code == 0xA0 ||
           code == 0x1680 || (code >= 0x2000 && code <= 0x200A) || code == 0x2028 ||
           code == 0x2029 || code == 0x202F || code == 0x205F || code == 0x3000;
}

/// Code points of Unicode's Cc and Bidi_Control beyond ASCII, and the two separators of lines.
bool steers(utf8proc_int32_t code) {
    return (code >= 0x80 && code <= 0x9F) || code == 0x61C || code == 0x200E || code == 0x200F ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string codePointName(utf8proc_int32_t code) {
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), code, 16).ptr;
    std::string name(digits.data(), end);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    return "<U+" + std::string(name.size() < 4 ? 4 - name.size() : 0, '0') + name + ">";
}

/// The byte offset behind the first `limit` characters; `counted` is how many there were.
std::size_t skipCharacters(std::string_view text, std::size_t limit, std::size_t& counted) {
    counted = 0;
    utf8proc_int32_t state = 0;
    utf8proc_int32_t previous = -1;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = 0;
        const auto code = codePointAt(text, at, length);
        const bool starts =
            previous < 0 || code < 0 || utf8proc_grapheme_break_stateful(previous, code, &state);
        if (starts) {
            if (previous < 0 || code < 0) state = 0;
            if (counted == limit) return at;
            ++counted;
        }
        previous = code;
        at += length;
    }
    return text.size();
}

} // namespace

bool isValidUtf8(std::string_view text) {
    for (std::size_t at = 0, length = 0; at < text.size(); at += length) {
        if (codePointAt(text, at, length) < 0) return false;
    }
    return true;
}

std::string toValidUtf8(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0, length = 0; at < text.size(); at += length) {
        const bool valid = codePointAt(text, at, length) >= 0;
        out += valid ? text.substr(at, length) : std::string_view("\xEF\xBF\xBD");
    }
    return out;
}

std::string withControlsShown(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0, length = 0; at < text.size(); at += length) {
        const auto code = codePointAt(text, at, length);
        if (code >= 0 && code < 0x20) {
            appendCodePoint(out, 0x2400 + code);
        } else if (code == 0x7F) {
            appendCodePoint(out, 0x2421);
        } else if (steers(code)) {
            out += codePointName(code);
        } else {
            out += text.substr(at, length);
        }
    }
    return out;
}

std::size_t characterCount(std::string_view text) {
    std::size_t counted = 0;
    skipCharacters(text, std::numeric_limits<std::size_t>::max(), counted);
    return counted;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    std::size_t counted = 0;
    return text.substr(0, skipCharacters(text, count, counted));
}

std::string_view trimmed(std::string_view text) {
    std::size_t begin = text.size();
    std::size_t end = 0;
    for (std::size_t at = 0, length = 0; at < text.size(); at += length) {
        if (isWhiteSpace(codePointAt(text, at, length))) continue;
        begin = std::min(begin, at);
        end = at + length;
    }
    return begin < end ? text.substr(begin, end - begin) : std::string_view();
}

std::string_view trimmedSpacesAndTabs(std::string_view text) {
    const auto begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

std::string lowerCased(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0, length = 0; at < text.size(); at += length) {
        const auto code = codePointAt(text, at, length);
        if (code < 0) {
            out += text[at];
        } else {
            appendCodePoint(out, utf8proc_tolower(code));
        }
    }
    return out;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return lowerCased(a) == lowerCased(b);
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string text;
    for (const std::string& piece : pieces) {
        if (&piece != &pieces.front()) text += separator;
        text += piece;
    }
    return text;
}

std::string fixed(double value, int decimals) {
    if (std::isnan(value)) return "nan";
    // A double has at most 309 digits before the point.
    std::array<char, 400> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, decimals)
                         .ptr;
    return {buffer.data(), end};
}

std::string percent(double share) {
    return fixed(share * 100, 1) + "%";
}

} // namespace kelvo
