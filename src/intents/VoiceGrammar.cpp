#include "intents/VoiceGrammar.h"

#include "base/Text.h"
#include "intents/KelvoShortcuts.h"
#include "intents/PhraseMatcher.h"
#include "intents/PhraseWords.h"

#include <array>
#include <map>
#include <vector>

namespace kelvo::VoiceGrammar {
namespace {

constexpr std::string_view soundPrefix = "sound_";

/// The sounds of American English, as the CMU dictionary names them.
constexpr std::array<std::string_view, 39> sounds{
    "AA", "AE", "AH", "AO", "AW", "AY", "B",  "CH", "D", "DH", "EH", "ER", "EY",
    "F",  "G",  "HH", "IH", "IY", "JH", "K",  "L",  "M", "N",  "NG", "OW", "OY",
    "P",  "R",  "S",  "SH", "T",  "TH", "UH", "UW", "V", "W",  "Y",  "Z",  "ZH"};

struct Pronunciation {
    std::string_view word;
    std::string_view sounds;
};

/// The product's name is in no dictionary. Its middle is said as a word or letter by letter.
constexpr std::array<Pronunciation, 3> ownPronunciations{
    {{"kelvo", "K EH L V OW"}, {"soc", "S AA K"}, {"soc", "EH S OW S IY"}}};

/// Sentences that people say when they mean none of the phrases. Without them the nearest phrase
/// would be heard. Found by trial; none sounds so like a phrase that it would win by chance.
constexpr std::array<std::string_view, 7> rivals{
    "(improve | remove | disapprove | approved | move) in kelvo soc two",
    "(approve | remove | improve | set up | adopt | running) kelvo soc two",
    "(set up | adopt) c c (ten | eleven | zero) in kelvo soc two",
    "(ask | run | approve in) kelvo soc (one | three | four | ten)",
    "(run | ask | prove it) in kelvo soc two",
    "(not | do not | don't | never | will | can't) <phrase>",
    "<phrase> (not | tomorrow | later | please)",
};

/// The words of a rival, without the grammar's own signs and names.
std::vector<std::string> rivalWords(std::string_view rival) {
    std::vector<std::string> words;
    std::string word;
    for (const char sign : std::string(rival) + " ") {
        if (sign == '\'' || sign == '<' || (sign >= 'a' && sign <= 'z')) {
            word += sign;
            continue;
        }
        if (!word.empty() && word.front() != '<') words.push_back(word);
        word.clear();
    }
    return words;
}

bool isOwn(std::string_view word) {
    for (const Pronunciation& own : ownPronunciations) {
        if (own.word == word) return true;
    }
    return false;
}

/// The phrase in the words that are said: digits as words, abbreviations letter by letter.
std::vector<std::string> saidWords(std::string_view phrase) {
    std::vector<std::string> said;
    for (const PhraseWord& word : phraseWords(phrase)) {
        if (const std::string_view digit = spokenDigit(word.text); !digit.empty()) {
            said.emplace_back(digit);
        } else if (word.abbreviation && !isOwn(word.text)) {
            for (const char letter : word.text)
                said.emplace_back(1, letter);
        } else {
            said.push_back(word.text);
        }
    }
    return said;
}

std::string soundWord(std::string_view sound) {
    return std::string(soundPrefix) + lowerCased(sound);
}

/// How many stray sounds before a phrase count as breath: fewer where more would depend on it.
int forgivenSounds(const Intent& intent) {
    if (std::holds_alternative<AdoptFamilyIntent>(intent)) return 2;
    if (std::holds_alternative<SealKelvoIntent>(intent)) return 0;
    // What follows an ask would be a question, which comes as an utterance of its own.
    const auto* ask = std::get_if<AskKelvoAgentIntent>(&intent);
    return ask == nullptr || ask->question.empty() ? 1 : -1;
}

/// A line's word without the number of the variant: "one" of "one(2)".
std::string_view headword(std::string_view line) {
    return line.substr(0, line.find_first_of("( \t"));
}

std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> each;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        each.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return each;
}

} // namespace

std::string grammar() {
    std::vector<std::string> phrases;
    for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases())
        phrases.push_back(joined(saidWords(phrase.text), " "));
    std::vector<std::string> single;
    single.reserve(sounds.size());
    for (const std::string_view sound : sounds)
        single.push_back(soundWord(sound));
    return "#JSGF V1.0;\ngrammar kelvo;\npublic <said> = <phrase> | <other> | <rival>;\n"
           "<phrase> = " +
           joined(phrases, "\n    | ") +
           ";\n<rival> = " + joined({rivals.begin(), rivals.end()}, "\n    | ") + ";\n<other> = (" +
           joined(single, " | ") + ")+;\n";
}

tl::expected<std::string, std::string> pronunciations(std::string_view dictionary) {
    std::map<std::string, std::vector<std::string>, std::less<>> needed;
    for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases()) {
        for (const std::string& word : saidWords(phrase.text))
            needed.try_emplace(word);
    }
    for (const std::string_view rival : rivals) {
        for (const std::string& word : rivalWords(rival))
            needed.try_emplace(word);
    }
    for (const std::string_view line : lines(dictionary)) {
        const std::size_t gap = line.find_first_of(" \t");
        const auto word = needed.find(headword(line));
        if (gap == std::string_view::npos || word == needed.end() || isOwn(word->first)) continue;
        word->second.emplace_back(trimmed(line.substr(gap)));
    }
    for (const Pronunciation& own : ownPronunciations)
        needed[std::string(own.word)].emplace_back(own.sounds);

    std::string text;
    for (const auto& [word, ways] : needed) {
        if (ways.empty()) return tl::unexpected(word);
        for (std::size_t i = 0; i < ways.size(); ++i) {
            const std::string variant = i == 0 ? "" : "(" + std::to_string(i + 1) + ")";
            text += word + variant + " " + ways[i] + "\n";
        }
    }
    for (const std::string_view sound : sounds)
        text += soundWord(sound) + " " + std::string(sound) + "\n";
    return text;
}

std::optional<Intent> heard(std::string_view hypothesis) {
    std::string_view rest = trimmed(hypothesis);
    int strays = 0;
    for (; rest.starts_with(soundPrefix); ++strays) {
        const std::size_t gap = rest.find(' ');
        rest = gap == std::string_view::npos ? std::string_view() : trimmed(rest.substr(gap));
    }
    if (rest.find(soundPrefix) != std::string_view::npos) return {};
    auto intent = matchPhrase(rest);
    if (!intent || strays > forgivenSounds(*intent)) return {};
    return intent;
}

} // namespace kelvo::VoiceGrammar
