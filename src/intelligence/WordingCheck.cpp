#include "intelligence/WordingCheck.h"

#include "base/Text.h"
#include "intelligence/WordingTokens.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <unordered_map>

namespace kelvo {
namespace {

using Kind = WordingPlace::Kind;
using Tokens = std::vector<WordingToken>;

/// Phrases of one kind: words or "," in a row, "a|b" for either, "*" for one to three words.
struct Phrases {
    Kind kind;
    std::string_view list; ///< separated by ";"
};

constexpr std::array<Phrases, 5> vague = {
    Phrases{Kind::frequency,
            "periodically;regularly;routinely;frequently;occasionally;often;timely;in a timely "
            "manner|fashion;promptly;continually;from time to time;as soon as possible|practicable;"
            "without undue delay;on a|an regular|ongoing basis"},
    Phrases{Kind::discretion,
            "as|where|when|if appropriate|necessary|needed|applicable|required|feasible|possible;"
            "to the extent possible|practicable|feasible;at * discretion;reasonable;best "
            "effort|efforts;deemed *"},
    Phrases{Kind::measure,
            "appropriate;adequate;sufficient;suitable;proper;robust;strong;effective;significant;"
            "state of the art;industry standard|standards;best practice|practices;high quality"},
    Phrases{Kind::duty,
            "should;may;might;could;strive|strives to;endeavour|endeavours|endeavor|endeavors to;"
            "aim|aims to;intend|intends to;seek|seeks to;try|tries to;is|are "
            "expected|encouraged|advised to;generally;typically;usually;normally"},
    Phrases{Kind::list,
            "etc .;etc;and so on;such as;including , but not limited to ,;including , but not "
            "limited to;including but not limited to;among others;and/or"},
};

using Alternatives = std::vector<std::string_view>;
struct Phrase {
    Kind kind;
    std::vector<Alternatives> words;
};

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (true) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

using PhraseTable = std::unordered_map<std::string_view, std::vector<Phrase>>;

PhraseTable phrasesByFirstWord() {
    PhraseTable table;
    for (const Phrases& phrases : vague) {
        for (const std::string_view text : split(phrases.list, ';')) {
            Phrase phrase{phrases.kind, {}};
            for (const std::string_view word : split(text, ' '))
                phrase.words.push_back(split(word, '|'));
            for (const std::string_view first : phrase.words.front())
                table[first].push_back(phrase);
        }
    }
    return table;
}

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> list) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

std::string_view wordAt(const Tokens& tokens, std::size_t at) {
    return at < tokens.size() ? std::string_view(tokens[at].lower) : std::string_view();
}

std::string_view wordBefore(const Tokens& tokens, std::size_t at) {
    return at > 0 ? wordAt(tokens, at - 1) : std::string_view();
}

/// The token behind the phrase that begins at `at`; none where the text goes another way.
std::optional<std::size_t> endOf(const Phrase& phrase, const Tokens& tokens, std::size_t at) {
    constexpr std::size_t widestGap = 3;
    std::size_t next = at;
    for (std::size_t i = 0; i < phrase.words.size(); ++i) {
        const Alternatives& wanted = phrase.words[i];
        if (next >= tokens.size()) return std::nullopt;
        if (wanted.front() != "*") {
            const auto& lower = tokens[next].lower;
            if (std::find(wanted.begin(), wanted.end(), lower) == wanted.end()) return std::nullopt;
            ++next;
            continue;
        }
        const bool last = i + 1 == phrase.words.size();
        const std::size_t limit = next + (last ? 1 : widestGap);
        const auto ends = [&] {
            return !last && tokens[next].lower == phrase.words[i + 1].front();
        };
        while (next < tokens.size() && next < limit && tokens[next].isWord() && !ends())
            ++next;
    }
    return next;
}

/// The words that are vague elsewhere and clear here.
bool isClear(const Tokens& tokens, std::size_t at, std::size_t end) {
    const WordingToken& first = tokens[at];
    const std::string_view next = wordAt(tokens, end);
    // Written so, it is the month wherever a policy begins a sentence with it.
    if (first.text == "May") return true;
    if (first.lower == "may" || first.lower == "could") return next == "not";
    if (first.lower == "often") return wordBefore(tokens, at) == "how";
    if (tokens[end - 1].lower == "required") return next == "by";
    if (first.lower == "effective") {
        return isOneOf(next, {"date", "from", "on", "as", "until", "upon", "immediately", ":"}) ||
               (end < tokens.size() && tokens[end].isNumber());
    }
    return false;
}

void addVague(const Tokens& tokens, std::vector<WordingPlace>& places) {
    static const PhraseTable table = phrasesByFirstWord();
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        const auto candidates = table.find(tokens[at].lower);
        if (candidates == table.end()) continue;
        for (const Phrase& phrase : candidates->second) {
            const auto end = endOf(phrase, tokens, at);
            if (!end || isClear(tokens, at, *end)) continue;
            const std::size_t start = tokens[at].start;
            places.push_back({start, tokens[*end - 1].end - start, phrase.kind});
        }
    }
}

/// "by" with somebody behind it, not a day.
bool namesActor(const Tokens& tokens, std::size_t by) {
    if (wordAt(tokens, by) != "by" || by + 1 >= tokens.size()) return false;
    const WordingToken& next = tokens[by + 1];
    return next.isWord() && !next.isNumber() && !monthOf(next.lower) &&
           !isOneOf(next.lower, {"default", "then", "end"});
}

void addPassives(const Tokens& tokens, std::vector<WordingPlace>& places) {
    for (std::size_t at = 0; at + 1 < tokens.size(); ++at) {
        if (!isOneOf(tokens[at].lower, {"shall", "must"}) || tokens[at + 1].lower != "be") continue;
        bool named = false;
        for (std::size_t i = at + 2; i < tokens.size() && !tokens[i].endsSentence() && !named; ++i)
            named = namesActor(tokens, i);
        const std::size_t start = tokens[at].start;
        if (!named) places.push_back({start, tokens[at + 1].end - start, Kind::actor});
    }
}

/// "[To be completed: …]" and other brackets around words, but for a link's.
std::optional<std::size_t> bracketEnd(std::string_view text, std::size_t at) {
    constexpr std::size_t longest = 400;
    const auto end = text.find(']', at);
    if (end == std::string_view::npos || end - at > longest) return std::nullopt;
    const std::string_view inside = text.substr(at + 1, end - at - 1);
    const auto letters = std::count_if(inside.begin(), inside.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    });
    const bool link = end + 1 < text.size() && text[end + 1] == '(';
    if (letters < 2 || link || inside.find('[') != std::string_view::npos) return std::nullopt;
    return end + 1;
}

void addBlanks(std::string_view text, const Tokens& tokens, std::vector<WordingPlace>& places) {
    for (auto at = text.find('['); at != std::string_view::npos; at = text.find('[', at + 1)) {
        if (const auto end = bracketEnd(text, at)) places.push_back({at, *end - at, Kind::blank});
    }
    for (std::size_t at = text.find("___"); at != std::string_view::npos;) {
        const auto end = std::min(text.find_first_not_of('_', at), text.size());
        places.push_back({at, end - at, Kind::blank});
        at = text.find("___", end);
    }
    for (const WordingToken& token : tokens) {
        const bool marks =
            token.text.size() > 1 && token.text.find_first_not_of('X') == token.text.npos;
        if (marks || isOneOf(token.lower, {"tbd", "tbc", "todo"}))
            places.push_back({token.start, token.end - token.start, Kind::blank});
    }
}

/// A heading's, a statement's or a version's number tells where, not how much.
bool isLabel(const Tokens& tokens, std::size_t at) {
    if (isOneOf(wordBefore(tokens, at),
                {"section", "sections", "clause", "paragraph", "article", "step", "appendix",
                 "annex", "see", "statement", "version", "page", "soc", "type", "tier"}))
        return true;
    if (!tokens[at].beginsLine) return false;
    const std::string_view next = wordAt(tokens, at + 1);
    const bool capital = at + 1 < tokens.size() && !tokens[at + 1].text.empty() &&
                         tokens[at + 1].text.front() >= 'A' && tokens[at + 1].text.front() <= 'Z';
    return capital || isOneOf(next, {".", ")", ":"});
}

void addNumbers(const Tokens& tokens, const WordingSources& sources,
                std::vector<WordingPlace>& places) {
    const std::set<std::string> known = numbersIn(sources.facts);
    const std::set<std::string> drafted = numbersIn(sources.drafted);
    const auto isSourced = [&](const std::string& value) {
        return known.contains(value) || !drafted.contains(value);
    };
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        if (const auto date = dateAt(tokens, at)) {
            bool sourced = date->day >= sources.day;
            if (!sourced) {
                sourced = true;
                for (std::size_t i = at; i < at + date->tokens; ++i) {
                    const auto number = numberAt(tokens, i);
                    sourced = sourced && (!number || isSourced(number->value));
                }
            }
            const std::size_t start = tokens[at].start;
            at += date->tokens - 1;
            if (!sourced) places.push_back({start, tokens[at].end - start, Kind::number});
            continue;
        }
        const auto number = numberAt(tokens, at);
        if (!number) continue;
        const std::size_t start = tokens[at].start;
        const bool fine = isLabel(tokens, at) || isSourced(number->value);
        at += number->tokens - 1;
        if (!fine) places.push_back({start, tokens[at].end - start, Kind::number});
    }
}

/// In the order of the text, without those that overlap a wider one.
std::vector<WordingPlace> widest(std::vector<WordingPlace> places) {
    std::stable_sort(
        places.begin(), places.end(),
        [](const WordingPlace& a, const WordingPlace& b) { return a.start < b.start; });
    std::vector<WordingPlace> kept;
    for (const WordingPlace& place : places) {
        const bool overlaps = !kept.empty() && place.start < kept.back().start + kept.back().length;
        if (!overlaps) {
            kept.push_back(place);
        } else if (place.length > kept.back().length) {
            kept.back() = place;
        }
    }
    return kept;
}

} // namespace

std::vector<WordingPlace> wordingPlaces(std::string_view text, const WordingSources& sources) {
    const Tokens tokens = wordingTokens(text);
    std::vector<WordingPlace> places;
    addVague(tokens, places);
    addPassives(tokens, places);
    addNumbers(tokens, sources, places);
    addBlanks(text, tokens, places);
    return widest(std::move(places));
}

std::string_view wordingKind(Kind kind) {
    constexpr std::array<std::string_view, 8> names = {
        "frequency", "discretion", "measure", "duty", "list", "actor", "number", "blank"};
    return names[static_cast<std::size_t>(kind)];
}

std::string_view wordingQuestion(Kind kind) {
    constexpr std::array<std::string_view, 8> questions = {"how often?",
                                                           "who decides?",
                                                           "measured how?",
                                                           "must it be done?",
                                                           "is it whole?",
                                                           "who does it?",
                                                           "where does this number come from?",
                                                           "to be filled in."};
    return questions[static_cast<std::size_t>(kind)];
}

std::string wordingCount(const std::vector<WordingPlace>& places) {
    const auto empty = std::count_if(places.begin(), places.end(), [](const WordingPlace& place) {
        return place.kind == Kind::blank;
    });
    const auto rest = static_cast<std::ptrdiff_t>(places.size()) - empty;
    const auto counted = [](std::ptrdiff_t count, std::string_view word) {
        return std::to_string(count) + std::string(word) + (count == 1 ? " place" : " places");
    };
    if (places.empty()) return "No empty and no vague place found.";
    if (empty == 0) return counted(rest, " vague");
    return counted(empty, " empty") + (rest == 0 ? "" : ", " + std::to_string(rest) + " vague");
}

} // namespace kelvo
