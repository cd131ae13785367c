#include "setup/Answers.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace kelvo {
namespace {

using Ids = std::initializer_list<std::string_view>;

bool speaksOnlyOf(const OrganisationRow& row, Ids criteria) {
    return !row.tsc.empty() &&
           std::all_of(row.tsc.begin(), row.tsc.end(), [&criteria](const std::string& each) {
               return std::find(criteria.begin(), criteria.end(), each) != criteria.end();
           });
}

} // namespace

OrganisationList answered(OrganisationList list, const Answers& answers) {
    std::erase_if(list.rows, [&answers](const OrganisationRow& row) {
        return (!answers.premises && speaksOnlyOf(row, {"CC6.4", "CC6.5"})) ||
               (!answers.devices && speaksOnlyOf(row, {"CC6.6", "CC6.7", "CC6.8"}));
    });
    return list;
}

std::vector<ListRole> rolesOf(const OrganisationList& list) {
    std::vector<ListRole> roles{{std::string(ownerRole), 0, false}};
    for (const OrganisationRow& row : list.rows) {
        const auto known = std::find_if(roles.begin(), roles.end(), [&row](const ListRole& each) {
            return each.name == row.role;
        });
        if (known == roles.end())
            roles.push_back({row.role, 1, false});
        else
            ++known->tasks;
    }
    roles.push_back({std::string(auditorRole), 0, true});
    return roles;
}

} // namespace kelvo
