#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// A word, a number with what joins its digits ("3.1", "2026-11-23", "09:00"), or one other
/// character. White space, hyphens and slashes between words are no tokens ("and/or" is one word);
/// an empty line is.
struct WordingToken {
    std::string_view text; ///< as written
    std::size_t start = 0; ///< in bytes, as is `end`
    std::size_t end = 0;
    std::string lower{};
    bool beginsLine = false; ///< but for the marks of a list or heading

    bool isWord() const;
    bool isNumber() const; ///< begins with a digit
    bool endsSentence() const;
};

std::vector<WordingToken> wordingTokens(std::string_view text);

/// A number in digits or in words ("twenty-four"); "one", ordinals and "2FA" are none.
struct WordingNumber {
    std::string value; ///< in digits, without thousands separators
    std::size_t tokens = 1;
};
std::optional<WordingNumber> numberAt(const std::vector<WordingToken>& tokens, std::size_t at);

/// The values of all numbers of a text.
std::set<std::string> numbersIn(std::string_view text);

/// A full date ("2026-11-23", "23 November 2026", "November 23, 2026") or month ("May 2027", its
/// last day).
struct WordingDate {
    std::chrono::sys_days day;
    std::size_t tokens = 1;
};
std::optional<WordingDate> dateAt(const std::vector<WordingToken>& tokens, std::size_t at);

/// 1 to 12 for an English month in lower case, also cut to three letters.
std::optional<unsigned> monthOf(std::string_view lower);

} // namespace kelvo
