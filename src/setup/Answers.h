#pragma once

#include "setup/OrganisationList.h"

#include <map>
#include <string>
#include <vector>

namespace kelvo {

/// What a person answers before the files are written.
struct Answers {
    std::string organisation{}; ///< its name; one line
    /// Role → full names of the accounts of who may take it; a role that nobody is named for is
    /// open to everybody.
    std::map<std::string, std::vector<std::string>> people{};
    bool premises = true; ///< offices or hosting rooms of their own
    bool devices = true;  ///< laptops and other devices of their own
};

/// The list without the rows that speak only of what the organisation does not have: those whose
/// common criteria are all CC6.4 or CC6.5 (premises), or all CC6.6 to CC6.8 (devices).
OrganisationList answered(OrganisationList list, const Answers& answers);

/// A role of the list and the number of its rows.
struct ListRole {
    std::string name;
    int tasks = 0;
    bool readonly = false;

    bool operator==(const ListRole&) const = default;
};

/// Owner first, each role that a row names in the order of rows, Auditor last.
std::vector<ListRole> rolesOf(const OrganisationList& list);

} // namespace kelvo
