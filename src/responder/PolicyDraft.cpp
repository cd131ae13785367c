#include "responder/PolicyDraft.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

namespace kelvo {
namespace {

struct Brief {
    std::string_view criterion;
    std::string_view owner;
    std::string_view facts;
};

std::optional<Brief> brief(std::string_view prompt) {
    constexpr std::string_view opening = "Criterion: ";
    constexpr std::string_view ownerLabel = "\nDocument owner: ";
    constexpr std::string_view factsLabel =
        "\nOrganization's actual facts/architecture for this criterion:\n";
    constexpr std::string_view closing = "\n\nWrite the formal document now.";
    const auto owner = prompt.find(ownerLabel);
    if (!prompt.starts_with(opening) || owner == std::string_view::npos) return std::nullopt;
    const auto facts = prompt.find(factsLabel, owner);
    if (facts == std::string_view::npos || !prompt.ends_with(closing)) return std::nullopt;
    const auto ownerAt = owner + ownerLabel.size();
    const auto factsAt = facts + factsLabel.size();
    return Brief{prompt.substr(opening.size(), owner - opening.size()),
                 prompt.substr(ownerAt, facts - ownerAt),
                 trimmed(prompt.substr(factsAt, prompt.size() - closing.size() - factsAt))};
}

/// Facts end at a line break, a semicolon, or a full stop with white space behind it.
std::vector<std::string> factsOf(std::string_view text) {
    std::vector<std::string> facts;
    std::string fact;
    const auto finish = [&] {
        std::string_view whole = trimmed(fact);
        while (whole.starts_with("- ") || whole.starts_with("* "))
            whole = trimmed(whole.substr(2));
        if (!whole.empty()) facts.emplace_back(whole);
        fact.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\n' || c == '\r' || c == ';') {
            finish();
            continue;
        }
        fact += c;
        const bool stop = c == '.' || c == '!' || c == '?';
        if (stop && i + 1 < text.size() && (text[i + 1] == ' ' || text[i + 1] == '\t')) finish();
    }
    finish();
    return facts;
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           static_cast<unsigned char>(c) >= 0x80;
}

/// The fact as a sentence: nothing but its first letter and its full stop is changed.
std::string sentence(std::string fact) {
    const auto wordEnd = std::find_if_not(fact.begin(), fact.end(), isLetter);
    const bool plainWord =
        std::all_of(fact.begin(), wordEnd, [](char c) { return c >= 'a' && c <= 'z'; });
    if (plainWord && wordEnd != fact.begin())
        fact.front() = static_cast<char>(fact.front() - 'a' + 'A');
    const char last = fact.back();
    if (last != '.' && last != '!' && last != '?' && last != ':') fact += '.';
    return fact;
}

bool hasWord(std::string_view lowered, std::string_view word) {
    for (auto at = lowered.find(word); at != std::string_view::npos;
         at = lowered.find(word, at + 1)) {
        const bool starts = at == 0 || !isLetter(lowered[at - 1]);
        const auto end = at + word.size();
        if (starts && (end == lowered.size() || !isLetter(lowered[end]))) return true;
    }
    return false;
}

bool hasAny(const std::string& fact, std::span<const std::string_view> words) {
    const std::string lowered = lowerCased(fact);
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return hasWord(lowered, word); });
}

constexpr std::array<std::string_view, 22> scopeWords = {
    "all",      "every",     "everyone", "staff",      "employees", "contractors",
    "people",   "users",     "systems",  "production", "laptops",   "devices",
    "customer", "customers", "vendors",  "services",   "servers",   "database",
    "endpoint", "region",    "office",   "company"};
constexpr std::array<std::string_view, 26> roleWords = {
    "owner",    "owns",    "responsible", "manager",   "manages",  "lead",      "officer",
    "cto",      "ceo",     "ciso",        "team",      "board",    "founder",   "founders",
    "approves", "approve", "approved",    "reviewer",  "engineer", "engineers", "administrator",
    "admin",    "head",    "director",    "committee", "on-call"};
constexpr std::array<std::string_view, 18> reviewWords = {
    "review",    "reviewed", "reviews",  "annual", "annually",  "yearly",
    "quarterly", "quarter",  "monthly",  "weekly", "year",      "month",
    "tested",    "test",     "exercise", "audit",  "refreshed", "renewed"};
constexpr std::array<std::string_view, 6> absentOpenings = {"no ",      "not ",     "none ",
                                                            "missing ", "without ", "lacks "};
constexpr std::array<std::string_view, 7> absentWords = {
    "not yet", "not in place",   "planned",     "is missing",
    "pending", "does not exist", "do not exist"};

bool isAbsent(const std::string& fact) {
    const std::string lowered = lowerCased(fact) + " ";
    return std::any_of(absentOpenings.begin(), absentOpenings.end(),
                       [&](std::string_view word) { return lowered.starts_with(word); }) ||
           hasAny(fact, absentWords);
}

std::string blank(std::string_view what) {
    return "[To be completed: " + std::string(what) + "]\n";
}

/// The statements among `facts` with one of `words`, each named by its number in section 3.
std::string references(const std::vector<std::string>& facts,
                       std::span<const std::string_view> words) {
    std::string lines;
    for (std::size_t i = 0; i < facts.size(); ++i) {
        if (hasAny(facts[i], words))
            lines += "See 3." + std::to_string(i + 1) + ": " + sentence(facts[i]) + "\n";
    }
    return lines;
}

} // namespace

std::optional<std::string> draftPolicy(std::string_view prompt) {
    const auto given = brief(prompt);
    if (!given) return std::nullopt;
    std::vector<std::string> inPlace;
    std::vector<std::string> absent;
    for (std::string& fact : factsOf(given->facts))
        (isAbsent(fact) ? absent : inPlace).push_back(std::move(fact));

    const std::string criterion(given->criterion);
    // The word stands for a person that is not verified.
    const bool named = !given->owner.empty() && given->owner != "owner";
    const std::string owner =
        named ? std::string(given->owner) + "\n" : blank("name of the document owner");

    std::string text = "Policy for " + criterion + "\n\nCriterion: " + criterion +
                       "\nDocument owner: " + owner +
                       "Effective date: " + blank("date of approval");

    text += "\n1. Purpose\nThis document sets down what the organization's record states for "
            "criterion " +
            criterion +
            ". Nothing is added to the record; what it does not state is left as a marked blank.\n";

    text += "\n2. Scope\n" + references(inPlace, scopeWords);
    text += blank("systems, people and locations to which this document applies");

    text += "\n3. Policy statements\n";
    for (std::size_t i = 0; i < inPlace.size(); ++i)
        text += "3." + std::to_string(i + 1) + " " + sentence(inPlace[i]) + "\n";
    if (inPlace.empty()) text += blank("the record states nothing in place for this criterion");
    if (!absent.empty()) {
        text += "\nNot in place, as recorded:\n";
        for (const std::string& fact : absent)
            text += "- " + sentence(fact) + "\n";
    }

    text += "\n4. Responsibilities\nThe document owner keeps this document: " + owner;
    const std::string roles = references(inPlace, roleWords);
    text += roles.empty() ? blank("who performs and who approves each statement") : roles;

    text += "\n5. Review\n";
    const std::string reviews = references(inPlace, reviewWords);
    text += reviews + blank(reviews.empty() ? "how often this document is reviewed, and by whom"
                                            : "date of the next review of this document");
    return std::string(trimmed(text));
}

} // namespace kelvo
