#include "responder/CriterionRanking.h"

#include "base/Text.h"
#include "responder/ControlTopics.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace kelvo {
namespace {

// BM25's saturation and length normalisation, and the length that counts as usual: a page.
constexpr double saturation = 1.2;
constexpr double lengthShare = 0.4;
constexpr double usualLength = 80.0;

// How much a kind of word tells. Set on the tuning part of the labelled documents.
constexpr double strongWeight = 2.0;
constexpr double ordinaryWeight = 0.5;
constexpr double idWeight = 1.0;
constexpr double evidenceWeight = 0.25;
constexpr double familyWeight = 0.4;
constexpr double titleOccurrences = 2.0;

// What a criterion needs to be proposed: so much by itself, and so much of what the best one has.
constexpr double leastScore = 10.0;
constexpr double leastShareOfBest = 0.3;

constexpr std::size_t longestTitle = 14; ///< words; a longer first line is running text

std::string familyOf(std::string_view id) {
    const auto end =
        std::find_if(id.begin(), id.end(), [](char c) { return c == '-' || c == '.'; });
    return std::string(id.begin(), end);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const auto end = text.find(separator);
        const std::string_view part = trimmed(text.substr(0, end));
        if (!part.empty()) parts.push_back(part);
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    return parts;
}

std::vector<std::string> idWords(const Stems& stems, std::string_view id) {
    std::vector<std::string> words = stems(id);
    const std::string family = lowerCased(familyOf(id));
    std::erase_if(words, [&](const std::string& word) { return word.empty() || word == family; });
    return words;
}

bool namesTopic(const Stems& stems, const std::vector<std::string>& words,
                const ControlTopic& topic) {
    for (const std::string_view key : split(topic.keys, ' ')) {
        if (std::find(words.begin(), words.end(), stems.stem(key)) != words.end()) return true;
    }
    return false;
}

std::string_view title(std::string_view document) {
    const std::string_view text = trimmed(document);
    return trimmed(text.substr(0, text.find('\n')));
}

} // namespace

CriterionRanking::CriterionRanking(const Stems& stems, const std::vector<std::string>& ids,
                                   const GroundTexts& ground)
    : stems_(stems), ids_(ids) {
    for (std::size_t i = 0; i < ids_.size(); ++i)
        addProfile(i, ids_[i], ground);
    countRarity(ground);
    for (std::size_t i = 0; i < terms_.size(); ++i)
        termsByFirstStem_[terms_[i].stems.front()].push_back(i);
}

void CriterionRanking::addProfile(std::size_t criterion, std::string_view id,
                                  const GroundTexts& ground) {
    const std::string family = familyOf(id);
    const std::vector<std::string> words = idWords(stems_, id);
    const auto siblings =
        static_cast<double>(std::count_if(ids_.begin(), ids_.end(), [&](const std::string& other) {
            return familyOf(other) == family;
        }));

    const bool namedAtHome =
        std::any_of(controlTopics().begin(), controlTopics().end(), [&](const ControlTopic& topic) {
            return topic.family == family && namesTopic(stems_, words, topic);
        });
    for (const ControlTopic& topic : controlTopics()) {
        const bool home = topic.family == family;
        double share = 0.0;
        if (namesTopic(stems_, words, topic) && (home || !namedAtHome)) {
            share = 1.0;
        } else if (home && std::none_of(ids_.begin(), ids_.end(), [&](const std::string& other) {
                       return familyOf(other) == family &&
                              namesTopic(stems_, idWords(stems_, other), topic);
                   })) {
            // What no criterion of the family claims belongs to all of them, and thinly to each.
            share = 1.0 / (siblings * siblings);
        }
        if (share == 0.0) continue;
        addVocabulary(criterion, topic.strong, share * strongWeight);
        addVocabulary(criterion, topic.ordinary, share * ordinaryWeight);
    }
    for (const std::string& word : words)
        addTerm(criterion, {word}, {}, idWeight);
    for (const GroundTexts::Criterion& each : ground.criteria) {
        if (each.id == id) addWords(criterion, each.evidence, evidenceWeight);
    }
    for (const GroundTexts::Family& each : ground.families) {
        if (each.id != family) continue;
        const double weight = familyWeight / siblings;
        addWords(criterion, each.criterion, weight);
        addWords(criterion, each.policy, weight);
        for (const std::string& artefact : each.evidence)
            addVocabulary(criterion, artefact, strongWeight * weight);
    }
}

void CriterionRanking::addVocabulary(std::size_t criterion, std::string_view phrases,
                                     double weight) {
    for (const std::string_view phrase : split(phrases, ','))
        addTerm(criterion, stems_(phrase), std::string(phrase), weight);
}

void CriterionRanking::addWords(std::size_t criterion, std::string_view text, double weight) {
    for (const std::string& word : stems_(text))
        addTerm(criterion, {word}, {}, weight);
}

void CriterionRanking::addTerm(std::size_t criterion, Phrase stems, std::string shown,
                               double weight) {
    std::erase(stems, std::string());
    if (stems.empty()) return;
    const auto [at, isNew] = termOf_.try_emplace(stems, terms_.size());
    if (isNew) terms_.push_back({std::move(stems), {}, 0.0, {}});
    if (terms_[at->second].shown.empty()) terms_[at->second].shown = std::move(shown);
    auto& weights = terms_[at->second].weight;
    const auto known = std::find_if(weights.begin(), weights.end(),
                                    [&](const auto& each) { return each.first == criterion; });
    if (known == weights.end()) {
        weights.emplace_back(criterion, weight);
    } else {
        known->second = std::max(known->second, weight);
    }
}

void CriterionRanking::countRarity(const GroundTexts& ground) {
    // A word is rare when few subjects, families and criteria use it, alone or inside a phrase.
    std::vector<std::string> texts;
    for (const ControlTopic& topic : controlTopics())
        texts.push_back(std::string(topic.strong) + "," + std::string(topic.ordinary));
    for (const GroundTexts::Family& each : ground.families) {
        texts.push_back(each.title + "\n" + each.criterion + "\n" + each.policy + "\n" +
                        joined(each.evidence, "\n"));
    }
    for (const GroundTexts::Criterion& each : ground.criteria)
        texts.push_back(each.id + "\n" + each.evidence);

    std::map<std::string, double> uses;
    std::map<Phrase, double> phraseUses;
    for (const std::string& text : texts) {
        const std::vector<std::string> sequence = stems_(text);
        std::set<std::string> seen;
        std::set<Phrase> seenPhrases;
        for (std::size_t i = 0; i < sequence.size(); ++i) {
            seen.insert(sequence[i]);
            Phrase phrase;
            for (std::size_t j = i; j < sequence.size() && j < i + 4; ++j) {
                phrase.push_back(sequence[j]);
                if (phrase.size() > 1 && termOf_.contains(phrase)) seenPhrases.insert(phrase);
            }
        }
        for (const std::string& word : seen)
            uses[word] += 1.0;
        for (const Phrase& phrase : seenPhrases)
            phraseUses[phrase] += 1.0;
    }
    const auto all = static_cast<double>(texts.size());
    for (Term& term : terms_) {
        const double count =
            term.stems.size() == 1 ? uses[term.stems.front()] : phraseUses[term.stems];
        term.rarity = std::log(1.0 + (all - count + 0.5) / (count + 0.5));
    }
}

std::map<std::size_t, double> CriterionRanking::occurrences(std::string_view document,
                                                            double& length) const {
    std::map<std::size_t, double> found;
    const auto count = [&](const std::vector<std::string>& sequence, double each) {
        for (std::size_t i = 0; i < sequence.size(); ++i) {
            const auto candidates = termsByFirstStem_.find(sequence[i]);
            if (candidates == termsByFirstStem_.end()) continue;
            for (const std::size_t term : candidates->second) {
                const Phrase& phrase = terms_[term].stems;
                if (sequence.size() - i < phrase.size()) continue;
                if (std::equal(phrase.begin(), phrase.end(),
                               sequence.begin() + static_cast<std::ptrdiff_t>(i)))
                    found[term] += each;
            }
        }
    };
    const std::vector<std::string> body = stems_(document);
    length = static_cast<double>(body.size());
    count(body, 1.0);
    const std::vector<std::string> heading = stems_(title(document));
    if (heading.size() <= longestTitle) count(heading, titleOccurrences);
    return found;
}

std::vector<CriterionMatch> CriterionRanking::rank(std::string_view document) const {
    double length = 0.0;
    const auto found = occurrences(document, length);
    const double stretch = 1.0 - lengthShare + lengthShare * length / usualLength;

    std::vector<CriterionMatch> matches;
    std::vector<std::vector<std::pair<double, std::size_t>>> parts(ids_.size());
    for (const std::string& id : ids_)
        matches.push_back({id, 0.0, {}});
    for (const auto& [index, count] : found) {
        const Term& term = terms_[index];
        const double presence = count * (saturation + 1.0) / (count + saturation * stretch);
        for (const auto& [criterion, weight] : term.weight) {
            const double part = weight * term.rarity * presence;
            matches[criterion].score += part;
            parts[criterion].emplace_back(part, index);
        }
    }
    for (std::size_t i = 0; i < matches.size(); ++i) {
        std::stable_sort(parts[i].begin(), parts[i].end(),
                         [](const auto& a, const auto& b) { return a.first > b.first; });
        for (const auto& [part, index] : parts[i]) {
            if (!terms_[index].shown.empty()) matches[i].phrases.push_back(terms_[index].shown);
        }
    }
    std::erase_if(matches, [](const CriterionMatch& match) { return match.score <= 0.0; });
    std::stable_sort(matches.begin(), matches.end(),
                     [](const auto& a, const auto& b) { return a.score > b.score; });
    return matches;
}

std::vector<CriterionMatch> CriterionRanking::evidenced(std::string_view document) const {
    std::vector<CriterionMatch> matches = rank(document);
    if (matches.empty()) return matches;
    const double least = std::max(leastScore, leastShareOfBest * matches.front().score);
    std::erase_if(matches, [&](const CriterionMatch& match) { return match.score < least; });
    return matches;
}

} // namespace kelvo
