#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// A run of letters or of digits in a sentence.
struct PhraseWord {
    std::string text;          ///< in lower case
    bool abbreviation = false; ///< it stood there in capitals, more than one
    std::size_t end = 0;       ///< where it ends in the sentence, in bytes
};

/// The words of a sentence in UTF-8. White space and punctuation part words, and so does the change
/// between letters and digits ("SOC2" is two words). Every other character counts as a letter, so
/// that a stray sign is never overlooked.
std::vector<PhraseWord> phraseWords(std::string_view sentence);

/// The spoken form of a digit from 1 to 9; empty for any other text.
std::string_view spokenDigit(std::string_view digit);

} // namespace kelvo
