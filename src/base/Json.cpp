#include "base/Json.h"

#include "base/Text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <vector>

namespace kelvo {
namespace {

/// Whole numbers up to here are written digit by digit; every one of them is exact in a double.
constexpr double largestPlainWhole = 9007199254740992.0; // 2^53

class Writer {
public:
    explicit Writer(JsonLayout layout) : pretty_(layout == JsonLayout::pretty) {}

    bool write(const Json& value, std::size_t depth) {
        if (depth > jsonDepthLimit) return false;
        switch (value.type()) {
        case Json::value_t::object:
            return writeObject(value, depth);
        case Json::value_t::array:
            return writeArray(value, depth);
        case Json::value_t::string:
            return writeString(value.get_ref<const std::string&>());
        case Json::value_t::boolean:
            out_ += value.get<bool>() ? "true" : "false";
            return true;
        case Json::value_t::number_integer:
            writeInteger(value.get<std::int64_t>());
            return true;
        case Json::value_t::number_unsigned:
            writeInteger(value.get<std::uint64_t>());
            return true;
        case Json::value_t::number_float:
            return writeDouble(value.get<double>());
        case Json::value_t::null:
            out_ += "null";
            return true;
        case Json::value_t::binary:
        case Json::value_t::discarded:
            break;
        }
        return false;
    }

    std::string take() { return std::move(out_); }

private:
    bool writeObject(const Json& object, std::size_t depth) {
        out_ += '{';
        bool first = true;
        for (const auto& [key, member] : object.get_ref<const Json::object_t&>()) {
            separate(first, depth + 1);
            if (!writeString(key)) return false;
            out_ += pretty_ ? " : " : ":";
            if (!write(member, depth + 1)) return false;
        }
        close('}', first, depth);
        return true;
    }

    bool writeArray(const Json& array, std::size_t depth) {
        out_ += '[';
        bool first = true;
        for (const Json& element : array.get_ref<const Json::array_t&>()) {
            separate(first, depth + 1);
            if (!write(element, depth + 1)) return false;
        }
        close(']', first, depth);
        return true;
    }

    void separate(bool& first, std::size_t depth) {
        if (!first) out_ += ',';
        first = false;
        breakLine(depth);
    }

    void close(char bracket, bool empty, std::size_t depth) {
        if (!empty) breakLine(depth);
        out_ += bracket;
    }

    void breakLine(std::size_t depth) {
        if (!pretty_) return;
        out_ += '\n';
        out_.append(2 * depth, ' ');
    }

    bool writeString(std::string_view text) {
        if (!isValidUtf8(text)) return false;
        out_ += '"';
        for (const char c : text)
            writeCharacter(c);
        out_ += '"';
        return true;
    }

    void writeCharacter(char c) {
        switch (c) {
        case '"':
            out_ += "\\\"";
            return;
        case '\\':
            out_ += "\\\\";
            return;
        case '/':
            out_ += "\\/";
            return;
        case '\b':
            out_ += "\\b";
            return;
        case '\f':
            out_ += "\\f";
            return;
        case '\n':
            out_ += "\\n";
            return;
        case '\r':
            out_ += "\\r";
            return;
        case '\t':
            out_ += "\\t";
            return;
        default:
            break;
        }
        if (static_cast<unsigned char>(c) < 0x20) {
            constexpr std::string_view digits = "0123456789abcdef";
            out_ += "\\u00";
            out_ += digits[static_cast<unsigned char>(c) >> 4];
            out_ += digits[static_cast<unsigned char>(c) & 15];
            return;
        }
        out_ += c;
    }

    template <class Integer>
    void writeInteger(Integer number) {
        std::array<char, 24> buffer{};
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
        out_.append(buffer.data(), end);
    }

    bool writeDouble(double number) {
        if (!std::isfinite(number)) return false;
        if (std::trunc(number) == number && std::abs(number) <= largestPlainWhole) {
            if (number == 0 && std::signbit(number)) out_ += '-';
            writeInteger(static_cast<std::int64_t>(number));
            return true;
        }
        std::array<char, 40> buffer{};
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
        out_.append(buffer.data(), end);
        return true;
    }

    bool pretty_;
    std::string out_;
};

/// What is looked for before the library parses.
struct Survey {
    bool tooDeep = false; ///< no reader or destructor may meet a value deeper than the limit
    std::vector<std::size_t> negativeZeros; ///< where each "-0" ends that is a whole number token
};

bool continuesNumber(std::string_view text, std::size_t at) {
    return at < text.size() && std::string_view("0123456789.eE").find(text[at]) != text.npos;
}

Survey survey(std::string_view text) {
    Survey found;
    std::size_t depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size() && !found.tooDeep; ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') ++i;
            if (c == '"') inString = false;
            continue;
        }
        if (c == '"') inString = true;
        if (c == '[' || c == '{') found.tooDeep = ++depth > jsonDepthLimit;
        if ((c == ']' || c == '}') && depth > 0) --depth;
        if (c == '-' && text.substr(i, 2) == "-0" && !continuesNumber(text, i + 2)) {
            found.negativeZeros.push_back(i + 2);
        }
    }
    return found;
}

/// The library reads "-0" as the integer 0 and loses the sign, which a payload and its record must
/// agree on; "-0.0" it reads as what it says.
std::string withFractions(std::string_view text, const std::vector<std::size_t>& negativeZeros) {
    std::string amended;
    std::size_t done = 0;
    for (const std::size_t end : negativeZeros) {
        amended.append(text.substr(done, end - done)).append(".0");
        done = end;
    }
    return amended.append(text.substr(done));
}

/// The library's messages carry a bracketed identifier of its own, and quote what was read last,
/// however long and whatever its bytes. People need one line that can be shown and logged.
std::string readable(std::string_view message) {
    constexpr std::size_t longest = 200;
    const auto end = message.find("] ");
    const std::string text =
        toValidUtf8(end == std::string_view::npos ? message : message.substr(end + 2));
    const std::string_view first = firstCharacters(text, longest);
    return std::string(first) + (first.size() < text.size() ? "…" : "");
}

} // namespace

std::optional<std::string> writeJson(const Json& value, JsonLayout layout) {
    Writer writer(layout);
    if (!writer.write(value, 0)) return std::nullopt;
    return writer.take();
}

tl::expected<Json, std::string> parseJson(std::string_view text) {
    const Survey found = survey(text);
    if (found.tooDeep) {
        return tl::unexpected("nested deeper than " + std::to_string(jsonDepthLimit) + " levels");
    }
    // The library would skip a byte order mark; the grammar has none.
    if (text.starts_with("\xEF\xBB\xBF")) {
        return tl::unexpected(std::string("begins with a byte order mark"));
    }
    // The library would take a NUL byte for the end of the text, whatever comes behind it.
    if (const auto at = text.find('\0'); at != text.npos) {
        return tl::unexpected("a NUL byte at byte " + std::to_string(at));
    }
    try {
        if (found.negativeZeros.empty()) return Json::parse(text);
        return Json::parse(withFractions(text, found.negativeZeros));
    } catch (const Json::exception& error) {
        return tl::unexpected(readable(error.what()));
    }
}

} // namespace kelvo
