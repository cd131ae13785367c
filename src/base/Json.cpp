#include "base/Json.h"

#include "base/Text.h"

#include <array>
#include <charconv>
#include <cmath>

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

/// Checked before parsing, so that no reader or destructor meets a value deeper than the limit.
bool nestsTooDeep(std::string_view text) {
    std::size_t depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') ++i;
            if (c == '"') inString = false;
            continue;
        }
        if (c == '"') inString = true;
        if (c == '[' || c == '{') {
            if (++depth > jsonDepthLimit) return true;
        }
        if ((c == ']' || c == '}') && depth > 0) --depth;
    }
    return false;
}

/// The library's messages carry a bracketed identifier of its own; people need only the rest.
std::string withoutTag(std::string_view message) {
    const auto end = message.find("] ");
    return std::string(end == std::string_view::npos ? message : message.substr(end + 2));
}

} // namespace

std::optional<std::string> writeJson(const Json& value, JsonLayout layout) {
    Writer writer(layout);
    if (!writer.write(value, 0)) return std::nullopt;
    return writer.take();
}

tl::expected<Json, std::string> parseJson(std::string_view text) {
    if (nestsTooDeep(text)) {
        return tl::unexpected("nested deeper than " + std::to_string(jsonDepthLimit) + " levels");
    }
    // The library would skip a byte order mark; the grammar has none.
    if (text.starts_with("\xEF\xBB\xBF")) {
        return tl::unexpected(std::string("begins with a byte order mark"));
    }
    try {
        return Json::parse(text);
    } catch (const Json::exception& error) {
        return tl::unexpected(withoutTag(error.what()));
    }
}

} // namespace kelvo
