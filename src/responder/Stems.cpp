#include "responder/Stems.h"

#include "base/Text.h"

#include <libstemmer.h>

#include <algorithm>
#include <array>

namespace kelvo {
namespace {

// Sorted: looked up by binary search.
constexpr std::array<std::string_view, 116> functionWords = {
    "a",    "about", "above", "after", "again", "all",   "also",   "am",     "an",     "and",
    "any",  "are",   "as",    "at",    "be",    "been",  "before", "being",  "below",  "both",
    "but",  "by",    "can",   "could", "did",   "do",    "does",   "doing",  "down",   "during",
    "each", "else",  "etc",   "for",   "from",  "had",   "has",    "have",   "having", "he",
    "her",  "here",  "him",   "his",   "how",   "i",     "if",     "in",     "into",   "is",
    "it",   "its",   "may",   "me",    "might", "more",  "most",   "must",   "my",     "no",
    "nor",  "not",   "of",    "off",   "on",    "one",   "only",   "or",     "other",  "our",
    "out",  "over",  "own",   "per",   "same",  "shall", "she",    "should", "so",     "some",
    "such", "than",  "that",  "the",   "their", "them",  "then",   "there",  "these",  "they",
    "this", "those", "three", "to",    "too",   "two",   "under",  "until",  "up",     "very",
    "was",  "we",    "were",  "what",  "when",  "where", "which",  "while",  "who",    "whom",
    "why",  "will",  "with",  "would", "you",   "your"};
static_assert(std::is_sorted(functionWords.begin(), functionWords.end()));

bool isWordByte(unsigned char byte) {
    return byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') ||
           (byte >= 'A' && byte <= 'Z');
}

bool isUpper(unsigned char byte) {
    return byte >= 'A' && byte <= 'Z';
}

bool isLower(unsigned char byte) {
    return byte >= 'a' && byte <= 'z';
}

/// Bytes between two words that let a phrase go on: spaces, hyphens, underscores, slashes.
bool joinsWords(unsigned char byte) {
    return byte == ' ' || byte == '\t' || byte == '-' || byte == '_' || byte == '/' ||
           byte == '\'' || byte == '&';
}

bool isShortNumber(std::string_view word) {
    return word.size() < 4 &&
           std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

void Stems::Free::operator()(sb_stemmer* stemmer) const {
    sb_stemmer_delete(stemmer);
}

Stems::Stems() : stemmer_(sb_stemmer_new("english", "UTF_8")) {
}
Stems::~Stems() = default;

std::string Stems::stem(std::string_view word) const {
    if (std::binary_search(functionWords.begin(), functionWords.end(), word)) return {};
    if (stemmer_ == nullptr) return std::string(word);
    const auto* bytes = reinterpret_cast<const sb_symbol*>(word.data());
    const sb_symbol* stemmed =
        sb_stemmer_stem(stemmer_.get(), bytes, static_cast<int>(word.size()));
    if (stemmed == nullptr) return std::string(word);
    return {reinterpret_cast<const char*>(stemmed),
            static_cast<std::size_t>(sb_stemmer_length(stemmer_.get()))};
}

std::vector<std::string> Stems::operator()(std::string_view text) const {
    std::vector<std::string> stems;
    std::size_t at = 0;
    while (at < text.size()) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (!isWordByte(byte)) {
            if (!joinsWords(byte) && !stems.empty() && !stems.back().empty()) {
                stems.emplace_back();
            }
            ++at;
            continue;
        }
        std::size_t end = at + 1;
        while (end < text.size() && isWordByte(static_cast<unsigned char>(text[end])) &&
               !(isLower(static_cast<unsigned char>(text[end - 1])) &&
                 isUpper(static_cast<unsigned char>(text[end])))) {
            ++end;
        }
        const std::string word = lowerCased(text.substr(at, end - at));
        at = end;
        if (isShortNumber(word)) continue;
        std::string stemmed = stem(word);
        if (!stemmed.empty()) stems.push_back(std::move(stemmed));
    }
    return stems;
}

} // namespace kelvo
