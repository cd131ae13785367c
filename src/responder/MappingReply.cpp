#include "responder/MappingReply.h"

#include "base/Json.h"
#include "base/Text.h"
#include "responder/CriterionRanking.h"

#include <algorithm>
#include <vector>

namespace kelvo {
namespace {

constexpr std::size_t longestTitle = 80; ///< characters
constexpr std::size_t phrasesShown = 3;

std::vector<std::string> listed(std::string_view ids) {
    constexpr std::string_view separator = ", ";
    std::vector<std::string> each;
    while (!ids.empty()) {
        const auto end = ids.find(separator);
        each.emplace_back(ids.substr(0, end));
        if (end == std::string_view::npos) break;
        ids.remove_prefix(end + separator.size());
    }
    return each;
}

/// The document's first line where it looks like a title, in quotation marks.
std::string titled(std::string_view document) {
    std::string_view line = trimmed(document);
    line = trimmed(line.substr(0, line.find('\n')));
    while (line.starts_with('#'))
        line.remove_prefix(1);
    line = trimmed(line);
    const bool data = line.starts_with('{') || line.starts_with('[') || line.starts_with('<');
    if (line.empty() || data || characterCount(line) > longestTitle) return "The document";
    return "“" + std::string(line) + "”";
}

std::string andList(const std::vector<std::string>& words) {
    if (words.size() < 2) return joined(words, "");
    return joined({words.begin(), words.end() - 1}, ", ") + " and " + words.back();
}

std::string summary(std::string_view document, const std::vector<CriterionMatch>& matches) {
    if (matches.empty()) return "The text does not speak clearly of any of the listed criteria.";
    std::vector<std::string> clauses;
    for (const CriterionMatch& match : matches) {
        const auto shown = std::min(phrasesShown, match.phrases.size());
        std::vector<std::string> phrases(
            match.phrases.begin(), match.phrases.begin() + static_cast<std::ptrdiff_t>(shown));
        clauses.push_back(phrases.empty() ? match.id : andList(phrases) + " (" + match.id + ")");
    }
    return titled(document) + " speaks of " + joined(clauses, "; of ") + ".";
}

} // namespace

std::optional<std::string> mappingReply(const Stems& stems, const GroundTexts& ground,
                                        std::string_view prompt) {
    constexpr std::string_view opening = "Allowed criterion ids: ";
    constexpr std::string_view heading = "\n\nDocument text:\n";
    const auto at = prompt.find(heading);
    if (!prompt.starts_with(opening) || at == std::string_view::npos) return std::nullopt;
    const auto ids = listed(prompt.substr(opening.size(), at - opening.size()));
    const std::string_view document = prompt.substr(at + heading.size());

    const auto matches = CriterionRanking(stems, ids, ground).evidenced(document);
    Json criteria = Json::array();
    for (const CriterionMatch& match : matches)
        criteria.push_back(match.id);
    return writeJson({{"criteria", std::move(criteria)}, {"summary", summary(document, matches)}});
}

} // namespace kelvo
