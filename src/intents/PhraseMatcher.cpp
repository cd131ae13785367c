#include "intents/PhraseMatcher.h"

#include "base/Text.h"
#include "intents/IntentRequest.h"
#include "intents/PhraseWords.h"

#include <utf8proc.h>

#include <algorithm>
#include <span>

namespace kelvo {
namespace {

using Words = std::span<const PhraseWord>;

constexpr std::size_t longestSentence = longestQuestion + 64;
constexpr std::size_t mostOffers = 10;

enum class Kind { gap, digit, letter };

Kind kindOf(utf8proc_int32_t character) {
    if (character >= '0' && character <= '9') return Kind::digit;
    if (character == '\t' || character == '\n' || character == '\r') return Kind::gap;
    switch (utf8proc_category(character)) {
    case UTF8PROC_CATEGORY_ZS:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
    case UTF8PROC_CATEGORY_PC:
    case UTF8PROC_CATEGORY_PD:
    case UTF8PROC_CATEGORY_PS:
    case UTF8PROC_CATEGORY_PE:
    case UTF8PROC_CATEGORY_PI:
    case UTF8PROC_CATEGORY_PF:
    case UTF8PROC_CATEGORY_PO:
        return Kind::gap;
    default:
        return Kind::letter;
    }
}

bool isAbbreviation(std::string_view word) {
    return word.size() > 1 &&
           std::ranges::all_of(word, [](char letter) { return letter >= 'A' && letter <= 'Z'; });
}

/// How many of `said` make up `word` at their beginning; 0 where they do not.
std::size_t wordsFor(const PhraseWord& word, Words said) {
    if (said.empty()) return 0;
    if (said[0].text == word.text || said[0].text == spokenDigit(word.text)) return 1;
    if (!word.abbreviation || said.size() < word.text.size()) return 0;
    for (std::size_t i = 0; i < word.text.size(); ++i) {
        if (said[i].text != word.text.substr(i, 1)) return 0;
    }
    return word.text.size();
}

/// How many of `said` make up the whole phrase at their beginning; 0 where they do not.
std::size_t wordsFor(Words phrase, Words said) {
    std::size_t used = 0;
    for (const PhraseWord& word : phrase) {
        const std::size_t count = wordsFor(word, said.subspan(used));
        if (count == 0) return 0;
        used += count;
    }
    return used;
}

/// What follows the phrase, without what parts the two.
std::string questionAfter(std::string_view sentence, const PhraseWord& last,
                          const PhraseWord* next) {
    if (next == nullptr) return {};
    std::string_view rest = trimmed(sentence.substr(last.end));
    for (const std::string_view mark : {"—", "–", ",", ":", ";", ".", "-"}) {
        if (!rest.starts_with(mark)) continue;
        rest = trimmed(rest.substr(mark.size()));
        break;
    }
    return std::string(rest);
}

/// Each of the typed words begins a word of the phrase, in order.
bool onTheWayTo(Words phrase, Words typed) {
    std::size_t at = 0;
    for (const PhraseWord& word : phrase) {
        if (at == typed.size()) break;
        if (word.text.starts_with(typed[at].text) || typed[at].text == spokenDigit(word.text)) ++at;
    }
    return at == typed.size();
}

} // namespace

std::string_view spokenDigit(std::string_view digit) {
    static constexpr std::array<std::string_view, 9> spoken{"one", "two",   "three", "four", "five",
                                                            "six", "seven", "eight", "nine"};
    static_assert(spoken.size() == SOC2Templates::count, "each family is called by one digit");
    if (digit.size() != 1 || digit[0] < '1' || digit[0] > '9') return {};
    return spoken[static_cast<std::size_t>(digit[0] - '1')];
}

std::vector<PhraseWord> phraseWords(std::string_view sentence) {
    std::vector<PhraseWord> words;
    Kind before = Kind::gap;
    std::size_t at = 0;
    std::size_t start = 0;
    const auto finish = [&] {
        if (before == Kind::gap) return;
        const std::string_view word = sentence.substr(start, at - start);
        words.push_back({lowerCased(word), isAbbreviation(word), at});
    };
    while (at < sentence.size()) {
        utf8proc_int32_t character = -1;
        const auto length =
            utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(sentence.data() + at),
                             static_cast<utf8proc_ssize_t>(sentence.size() - at), &character);
        const Kind kind = length > 0 ? kindOf(character) : Kind::letter;
        if (kind != before) {
            finish();
            start = at;
        }
        before = kind;
        at += length > 0 ? static_cast<std::size_t>(length) : 1;
    }
    finish();
    return words;
}

std::optional<Intent> matchPhrase(std::string_view sentence) {
    if (sentence.size() > longestSentence || !isValidUtf8(sentence)) return std::nullopt;
    const std::vector<PhraseWord> said = phraseWords(sentence);
    for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases()) {
        const std::size_t used = wordsFor(phraseWords(phrase.text), said);
        if (used == 0) continue;
        if (std::holds_alternative<AskKelvoAgentIntent>(phrase.intent)) {
            const PhraseWord* next = used < said.size() ? &said[used] : nullptr;
            return AskKelvoAgentIntent{questionAfter(sentence, said[used - 1], next)};
        }
        if (used == said.size()) return phrase.intent;
    }
    return std::nullopt;
}

std::vector<PhraseOffer> phraseOffers(std::string_view typed) {
    if (typed.size() > longestSentence || !isValidUtf8(typed)) return {};
    if (const auto whole = matchPhrase(typed)) {
        const std::string_view title = KelvoShortcuts::shortcutOf(*whole).shortTitle;
        const auto* ask = std::get_if<AskKelvoAgentIntent>(&*whole);
        if (ask == nullptr) return {{*whole, std::string(trimmed(typed)), title, true}};
        if (ask->question.empty()) return {};
        return {{*whole, ask->question, title, true}};
    }
    const std::vector<PhraseWord> words = phraseWords(typed);
    std::size_t letters = 0;
    for (const PhraseWord& word : words)
        letters += word.text.size();
    std::vector<PhraseOffer> offers;
    if (letters < 3) return offers;
    for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases()) {
        if (offers.size() == mostOffers) break;
        if (std::holds_alternative<AskKelvoAgentIntent>(phrase.intent)) continue;
        const bool offered =
            std::ranges::find(offers, phrase.intent, &PhraseOffer::intent) != offers.end();
        if (offered || !onTheWayTo(phraseWords(phrase.text), words)) continue;
        offers.push_back({phrase.intent, phrase.text,
                          KelvoShortcuts::shortcutOf(phrase.intent).shortTitle, false});
    }
    return offers;
}

} // namespace kelvo
