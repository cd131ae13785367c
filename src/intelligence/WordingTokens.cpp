#include "intelligence/WordingTokens.h"

#include "base/Text.h"

#include <algorithm>
#include <array>

namespace kelvo {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isWordByte(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// The length of the punctuation character of more than one byte at `at`, 0 where there is none:
/// U+00A0 to U+00BF, U+2000 to U+206F.
std::size_t widePunctuation(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U;
    };
    if (byte(0) == 0xC2 && byte(1) >= 0x80) return 2;
    if (byte(0) == 0xE2 && (byte(1) == 0x80 || byte(1) == 0x81)) return 3;
    return 0;
}

/// Hyphens and spaces of more than one byte join words as the plain ones do.
bool joinsWords(std::string_view character) {
    return character == "\u00a0" || character == "\u2010" || character == "\u2011" ||
           character == "\u202f";
}

/// Where the word that begins at `at` ends.
std::size_t wordEnd(std::string_view text, std::size_t at) {
    const bool numeric = isDigit(text[at]);
    std::size_t end = at;
    while (end < text.size()) {
        const char c = text[end];
        const char next = end + 1 < text.size() ? text[end + 1] : ' ';
        const bool letter = isWordByte(c) || (static_cast<unsigned char>(c) >= 0x80 &&
                                              widePunctuation(text, end) == 0);
        const bool inWord = c == '\'' && isWordByte(next);
        const bool inNumber =
            end > at && isDigit(text[end - 1]) && isDigit(next) &&
            (c == '.' || (numeric && (c == ',' || c == ':' || c == '-' || c == '/')));
        if (!letter && !inWord && !inNumber) break;
        ++end;
    }
    return end;
}

constexpr std::array<std::string_view, 12> months = {
    "january", "february", "march",     "april",   "may",      "june",
    "july",    "august",   "september", "october", "november", "december"};

constexpr std::array<std::string_view, 20> small = {
    "zero",     "",        "two",     "three",     "four",     "five",    "six",
    "seven",    "eight",   "nine",    "ten",       "eleven",   "twelve",  "thirteen",
    "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
constexpr std::array<std::string_view, 10> tens = {"",      "",      "twenty",  "thirty", "forty",
                                                   "fifty", "sixty", "seventy", "eighty", "ninety"};

template <class List>
std::optional<int> indexIn(const List& list, std::string_view word) {
    if (word.empty()) return std::nullopt;
    const auto found = std::find(list.begin(), list.end(), word);
    if (found == list.end()) return std::nullopt;
    return static_cast<int>(found - list.begin());
}

std::string_view lowerAt(const std::vector<WordingToken>& tokens, std::size_t at) {
    return at < tokens.size() ? std::string_view(tokens[at].lower) : std::string_view();
}

/// A whole number of at most four digits.
std::optional<int> wholeNumber(std::string_view digits) {
    if (digits.empty() || digits.size() > 4 || !std::all_of(digits.begin(), digits.end(), isDigit))
        return std::nullopt;
    int value = 0;
    for (const char c : digits)
        value = 10 * value + (c - '0');
    return value;
}

std::optional<std::chrono::sys_days> dayOf(std::optional<int> year, std::optional<unsigned> month,
                                           std::optional<int> day) {
    constexpr int firstYear = 1900;
    if (!year || !month || !day || *year < firstYear) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year{*year}, std::chrono::month{*month},
                                           std::chrono::day{static_cast<unsigned>(*day)}};
    if (!date.ok()) return std::nullopt;
    return std::chrono::sys_days{date};
}

} // namespace

bool WordingToken::isWord() const {
    return !text.empty() &&
           (isWordByte(text.front()) || static_cast<unsigned char>(text.front()) >= 0xC3);
}

bool WordingToken::isNumber() const {
    return !text.empty() && isDigit(text.front());
}

bool WordingToken::endsSentence() const {
    return text == "." || text == ";" || text == "!" || text == "?" || text == "\n";
}

std::vector<WordingToken> wordingTokens(std::string_view text) {
    std::vector<WordingToken> tokens;
    bool atLineStart = true;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        std::size_t end = at + 1;
        if (c == '\n') {
            atLineStart = true;
            // A line that ends inside a sentence goes on in the next; an empty one never does.
            if (end < text.size() && text[end] == '\n')
                tokens.push_back({text.substr(at, 1), at, end, "\n", false});
            at = end;
            continue;
        }
        const std::size_t wide = widePunctuation(text, at);
        const std::string_view character = text.substr(at, std::max<std::size_t>(wide, 1));
        const bool word = wide == 0 && (isWordByte(c) || static_cast<unsigned char>(c) >= 0x80);
        if (word) {
            end = wordEnd(text, at);
            if (lowerCased(text.substr(at, 6)) == "and/or" && end == at + 3) end = at + 6;
        } else if (wide > 0) {
            end = at + wide;
        }
        const bool joins = c == ' ' || c == '\t' || c == '\r' || c == '-' || c == '/' || c == '*' ||
                           c == '#' || c == '>' || joinsWords(character);
        if (!joins) {
            const std::string_view piece = text.substr(at, end - at);
            tokens.push_back({piece, at, end, lowerCased(piece), atLineStart});
            atLineStart = false;
        }
        at = end;
    }
    return tokens;
}

std::optional<WordingNumber> numberAt(const std::vector<WordingToken>& tokens, std::size_t at) {
    if (at >= tokens.size()) return std::nullopt;
    const WordingToken& token = tokens[at];
    if (token.isNumber()) {
        std::string value;
        std::size_t i = 0;
        for (; i < token.text.size() && (isDigit(token.text[i]) || !isWordByte(token.text[i]));
             ++i) {
            if (token.text[i] != ',') value += token.text[i];
        }
        const std::string_view unit = std::string_view(token.lower).substr(i);
        if (unit == "st" || unit == "nd" || unit == "rd" || unit == "th" || unit == "fa")
            return std::nullopt;
        return WordingNumber{std::move(value), 1};
    }
    const std::string_view next = lowerAt(tokens, at + 1);
    if (const auto unit = indexIn(small, token.lower)) {
        if (next == "factor" || next == "step") return std::nullopt;
        return WordingNumber{std::to_string(*unit), 1};
    }
    const auto ten = indexIn(tens, token.lower);
    if (!ten)
        return token.lower == "hundred" ? std::optional(WordingNumber{"100", 1}) : std::nullopt;
    const auto unit = next == "one" ? std::optional(1) : indexIn(small, next);
    if (unit && *unit > 0 && *unit < 10) return WordingNumber{std::to_string(10 * *ten + *unit), 2};
    return WordingNumber{std::to_string(10 * *ten), 1};
}

std::set<std::string> numbersIn(std::string_view text) {
    const auto tokens = wordingTokens(text);
    std::set<std::string> values;
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        const auto number = numberAt(tokens, at);
        if (!number) continue;
        values.insert(number->value);
        at += number->tokens - 1;
    }
    return values;
}

std::optional<WordingDate> dateAt(const std::vector<WordingToken>& tokens, std::size_t at) {
    const std::string_view first = lowerAt(tokens, at);
    if (first.size() == 10 && first[4] == '-' && first[7] == '-') {
        const auto month = wholeNumber(first.substr(5, 2));
        const auto day = dayOf(wholeNumber(first.substr(0, 4)),
                               month ? std::optional(static_cast<unsigned>(*month)) : std::nullopt,
                               wholeNumber(first.substr(8, 2)));
        return day ? std::optional(WordingDate{*day, 1}) : std::nullopt;
    }
    const std::string_view second = lowerAt(tokens, at + 1);
    if (const auto day =
            dayOf(wholeNumber(lowerAt(tokens, at + 2)), monthOf(second), wholeNumber(first)))
        return WordingDate{*day, 3};
    const auto month = monthOf(first);
    if (!month) return std::nullopt;
    const bool comma = lowerAt(tokens, at + 2) == ",";
    if (const auto day =
            dayOf(wholeNumber(lowerAt(tokens, at + (comma ? 3 : 2))), month, wholeNumber(second)))
        return WordingDate{*day, comma ? std::size_t{4} : std::size_t{3}};
    if (const auto day = dayOf(wholeNumber(second), month, 1)) {
        const std::chrono::year_month_day begin{*day};
        return WordingDate{std::chrono::sys_days{begin.year() / begin.month() / std::chrono::last},
                           2};
    }
    return std::nullopt;
}

std::optional<unsigned> monthOf(std::string_view lower) {
    constexpr std::size_t shortest = 3;
    for (std::size_t i = 0; i < months.size(); ++i) {
        const bool shortened = lower.size() == shortest && months[i].starts_with(lower);
        if (shortened || lower == months[i]) return static_cast<unsigned>(i) + 1;
    }
    return std::nullopt;
}

} // namespace kelvo
