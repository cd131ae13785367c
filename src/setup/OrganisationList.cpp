#include "setup/OrganisationList.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

namespace kelvo {
namespace {

/// A node's evidence text holds two of these and must stay below what the readiness graph's reader
/// takes.
constexpr std::size_t longestCell = std::size_t{64} << 10;
constexpr std::size_t longestId = 64;
constexpr std::int64_t largestWeight = 1000;

struct RecurrenceWords {
    Recurrence recurrence;
    std::string_view file;
    std::string_view due;
};

constexpr std::array<RecurrenceWords, 8> recurrences{{
    {Recurrence::once, "once", "once"},
    {Recurrence::annual, "annual", "yearly"},
    {Recurrence::semiannual, "semiannual", "half-yearly"},
    {Recurrence::quarterly, "quarterly", "quarterly"},
    {Recurrence::monthly, "monthly", "monthly"},
    {Recurrence::weekly, "weekly", "weekly"},
    {Recurrence::daily, "daily", "daily"},
    {Recurrence::event, "event", "each time"},
}};

constexpr std::array<std::string_view, 3> closings{"attest", "os", "generate"};

const RecurrenceWords& wordsOf(Recurrence recurrence) {
    return recurrences.at(static_cast<std::size_t>(recurrence));
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isIdCharacter(char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '_';
}

std::string quoted(std::string_view text) {
    constexpr std::size_t shown = 80;
    const std::string_view start = firstCharacters(text, shown);
    return "“" + std::string(start) + (start.size() < text.size() ? "…" : "") + "”";
}

std::optional<std::string> faultOfId(const std::string& id) {
    if (id.empty()) return "the id is missing";
    const std::string named = "the id " + quoted(id);
    if (id.find(' ') != std::string::npos) return named + " holds a blank";
    if (!isLetter(id.front())) return named + " does not begin with a letter";
    const auto odd =
        std::find_if(id.begin(), id.end(), [](char each) { return !isIdCharacter(each); });
    if (odd != id.end()) {
        const auto at = static_cast<std::size_t>(odd - id.begin());
        return named + " holds " + quoted(firstCharacters(std::string_view(id).substr(at), 1));
    }
    if (id.size() > longestId) return named + " is longer than 64 characters";
    return std::nullopt;
}

bool holdsControls(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char each) {
        const auto byte = static_cast<unsigned char>(each);
        return (byte < 0x20 && each != '\n' && each != '\t') || byte == 0x7f;
    });
}

/// Each text of a row with what it is called in a fault.
std::vector<std::pair<const char*, std::string_view>> textsOf(const OrganisationRow& row) {
    return {{"title", row.title},
            {"evidence", row.evidence},
            {"gap", row.gap},
            {"role", row.role},
            {"task", row.task}};
}

class Check {
public:
    Check(OrganisationList list, ListFaults found)
        : list_(std::move(list)), faults_(std::move(found)) {}

    tl::expected<OrganisationList, ListFaults> result() && {
        if (list_.rows.empty() && faults_.empty()) say(0, "there is no criterion in it");
        for (OrganisationRow& row : list_.rows) {
            checkId(row);
            checkTexts(row);
            checkNumbers(row);
            settleRole(row);
            if (row.task.empty()) row.task = row.title;
        }
        if (faults_.empty()) return std::move(list_);
        std::stable_sort(faults_.begin(), faults_.end(),
                         [](const ListFault& a, const ListFault& b) { return a.line < b.line; });
        return tl::unexpected(std::move(faults_));
    }

private:
    void say(std::size_t line, std::string reason) { faults_.push_back({line, std::move(reason)}); }

    void say(const OrganisationRow& row, std::string reason) {
        // Where no line tells, the id does.
        const bool named = row.line == 0 && !row.id.empty();
        say(row.line, (named ? "the control " + quoted(row.id) + ": " : "") + std::move(reason));
    }

    void checkId(const OrganisationRow& row) {
        if (auto fault = faultOfId(row.id)) return say(row, std::move(*fault));
        const auto [first, isNew] = lines_.try_emplace(row.id, row.line);
        if (isNew) return;
        const std::string where =
            first->second == 0 ? "" : " by line " + std::to_string(first->second);
        say(row, "the id " + quoted(row.id) + " is taken" + where);
    }

    void checkTexts(const OrganisationRow& row) {
        if (row.title.empty()) say(row, "the title is missing");
        for (const auto& [column, text] : textsOf(row)) {
            const std::string what = std::string("the ") + column;
            if (text.size() > longestCell) say(row, what + " is longer than 64 KiB");
            if (holdsControls(text)) say(row, what + " holds a control character");
        }
        if (!row.gap.empty() && row.evidence.find("GAP:") != std::string::npos)
            say(row, "the evidence holds “GAP:”, and there is a gap besides");
        for (const std::string& each : row.tsc) {
            if (!isCriterionId(each)) say(row, quoted(each) + " in tsc is no id of a criterion");
        }
    }

    void checkNumbers(const OrganisationRow& row) {
        if (row.weight < 0 || row.weight > largestWeight)
            say(row, "the weight " + std::to_string(row.weight) + " is not within 0 and 1000");
        if (!(row.level >= 0 && row.level <= 1)) say(row, "the level is not within 0 and 1");
    }

    void settleRole(OrganisationRow& row) {
        if (row.role.empty()) row.role = ownerRole;
        row.role = spellings_.try_emplace(lowerCased(row.role), row.role).first->second;
        if (row.role == auditorRole) say(row, "the role Auditor only looks, so it can have no row");
    }

    OrganisationList list_;
    ListFaults faults_;
    std::map<std::string, std::size_t> lines_; ///< of each id
    std::map<std::string, std::string> spellings_{
        {lowerCased(ownerRole), std::string(ownerRole)},
        {lowerCased(auditorRole), std::string(auditorRole)}};
};

} // namespace

std::string_view fileWord(Recurrence recurrence) {
    return wordsOf(recurrence).file;
}

std::string_view dueWord(Recurrence recurrence) {
    return wordsOf(recurrence).due;
}

std::optional<Recurrence> recurrence(std::string_view fileWord) {
    for (const RecurrenceWords& each : recurrences) {
        if (equalIgnoringCase(each.file, fileWord)) return each.recurrence;
    }
    return std::nullopt;
}

std::string_view fileWord(CloseBy close) {
    return closings.at(static_cast<std::size_t>(close));
}

std::optional<CloseBy> closeBy(std::string_view fileWord) {
    for (std::size_t i = 0; i < closings.size(); ++i) {
        if (equalIgnoringCase(closings.at(i), fileWord)) return static_cast<CloseBy>(i);
    }
    return std::nullopt;
}

std::string sentence(const ListFault& fault, std::string_view name) {
    const std::string where = fault.line == 0 ? "" : "Line " + std::to_string(fault.line) + " of ";
    return where + withControlsShown(toValidUtf8(name)) + ": " +
           withControlsShown(toValidUtf8(fault.reason)) + ".";
}

tl::expected<OrganisationList, ListFaults> settled(OrganisationList list, ListFaults found) {
    return Check(std::move(list), std::move(found)).result();
}

std::string asOneLine(std::string_view text) {
    std::string line;
    bool between = false;
    for (const char each : trimmed(text)) {
        const bool isBreak = each == '\n' || each == '\r' || each == '\t';
        if (isBreak) {
            between = true;
            continue;
        }
        if (between && each != ' ' && line.back() != ' ') line += ' ';
        between = false;
        line += each;
    }
    return line;
}

bool isCriterionId(std::string_view text) {
    return !text.empty() && text.size() <= longestId && isLetter(text.front()) &&
           std::all_of(text.begin(), text.end(), isIdCharacter);
}

} // namespace kelvo
