#pragma once

#include <tl/expected.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// How often a criterion wants evidence.
enum class Recurrence { once, annual, semiannual, quarterly, monthly, weekly, daily, event };

/// The word that files have for it: "semiannual".
std::string_view fileWord(Recurrence recurrence);
/// The word that a person reads: "half-yearly".
std::string_view dueWord(Recurrence recurrence);
/// By its file word, without regard to letter case.
std::optional<Recurrence> recurrence(std::string_view fileWord);

/// How the task of a criterion is completed.
enum class CloseBy { attest, os, generate };

std::string_view fileWord(CloseBy close);
std::optional<CloseBy> closeBy(std::string_view fileWord);

/// One criterion of an organisation, with the role that answers for it.
struct OrganisationRow {
    std::string id;    ///< a letter, then letters, digits, ".", "-", "_"; 64 characters at most
    std::string title; ///< one line
    std::int64_t weight = 3; ///< 0 to 1000
    double level = 0;        ///< 0 to 1
    std::string evidence{};
    std::string gap{};
    std::vector<std::string> tsc{}; ///< ids of the common criteria behind it
    Recurrence due = Recurrence::annual;
    std::string role{}; ///< "Owner" where none is named
    CloseBy close = CloseBy::attest;
    std::string task{};   ///< the title where none is given
    std::size_t line = 0; ///< of the file it was read from, from 1; 0 where it has none

    bool operator==(const OrganisationRow&) const = default;
};

/// What an organisation does for its security, in the order in which it will be worked through.
struct OrganisationList {
    std::vector<OrganisationRow> rows;

    bool operator==(const OrganisationList&) const = default;
};

/// The role that decides, and the one that only looks. Every organisation has both.
inline constexpr std::string_view ownerRole = "Owner";
inline constexpr std::string_view auditorRole = "Auditor";

/// What keeps a list from being taken.
struct ListFault {
    std::size_t line = 0; ///< of the file, from 1; 0 where it concerns no line
    std::string reason;   ///< "the id “CC6 access” holds a blank"

    bool operator==(const ListFault&) const = default;
};

using ListFaults = std::vector<ListFault>;

/// "Line 7 of NAME: REASON.", or "NAME: REASON." where it concerns no line. One line of text,
/// whatever NAME and the file hold.
std::string sentence(const ListFault& fault, std::string_view name);

/// Fills in what a row leaves out (role, task), takes a role's first spelling for all of its
/// spellings, and checks what every list must keep, whatever it was read from. Answers every fault,
/// in the order of lines; `found` are those that its reader has found already.
tl::expected<OrganisationList, ListFaults> settled(OrganisationList list, ListFaults found = {});

/// The text as one line: without white space at both ends, each run of line ends and tabs inside
/// as one blank.
std::string asOneLine(std::string_view text);

/// True for an id as `OrganisationRow::id` describes.
bool isCriterionId(std::string_view text);

} // namespace kelvo
