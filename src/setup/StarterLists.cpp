#include "setup/StarterLists.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {
namespace {

struct StarterRow {
    std::string_view id;
    std::string_view title;
    std::string_view tsc; ///< ids, a blank between
    std::int64_t weight;
    Recurrence due;
    std::string_view role;
    CloseBy close = CloseBy::attest;
};

constexpr std::array<StarterRow, 13> shortRows{{
    {"CC1-governance", "The owners set rules, talk about security and keep minutes",
     "CC1.1 CC1.2 CC1.3 CC1.5", 4, Recurrence::semiannual, "Owner"},
    {"CC1-people", "New people are checked, trained and sign the rules before they get access",
     "CC1.4 CC2.2", 4, Recurrence::event, "People lead"},
    {"CC2-communication", "Systems are described, and anybody can report a problem", "CC2.1 CC2.3",
     3, Recurrence::annual, "Owner"},
    {"CC3-risk", "Risks, fraud and large changes are assessed", "CC3.1 CC3.2 CC3.3 CC3.4", 5,
     Recurrence::annual, "Owner"},
    {"CC4-monitoring", "We test our own controls, and each finding has a name and a date",
     "CC4.1 CC4.2", 3, Recurrence::quarterly, "Owner"},
    {"CC5-policies", "Each risk is answered by a control that is written down and known",
     "CC5.1 CC5.2 CC5.3", 4, Recurrence::annual, "Owner"},
    {"CC6-access",
     "Every account is asked for, belongs to a person who needs it, and ends with them",
     "CC6.1 CC6.2 CC6.3", 8, Recurrence::quarterly, "Engineer"},
    {"CC6-premises", "Offices and old devices give nothing away", "CC6.4 CC6.5", 2,
     Recurrence::annual, "Owner"},
    {"CC6-devices", "Laptops are encrypted, behind a firewall, and lock", "CC6.6 CC6.7 CC6.8", 6,
     Recurrence::monthly, "Engineer", CloseBy::os},
    {"CC7-vulnerabilities", "Known holes are closed in time, and alerts reach somebody who acts",
     "CC7.1 CC7.2", 5, Recurrence::monthly, "Engineer"},
    {"CC7-incidents",
     "The incident plan is rehearsed, and a backup is restored to prove that it works",
     "CC7.3 CC7.4 CC7.5", 5, Recurrence::semiannual, "Engineer"},
    {"CC8-changes", "A second person approves each change", "CC8.1", 4, Recurrence::event,
     "Engineer"},
    {"CC9-suppliers", "Suppliers are assessed, and we know what we do when one fails",
     "CC9.1 CC9.2", 4, Recurrence::annual, "Owner"},
}};

constexpr std::array<StarterRow, 27> longRows{{
    {"oversight", "The owners talk about security and keep minutes", "CC1.2 CC1.3", 4,
     Recurrence::semiannual, "Owner"},
    {"conduct", "Everyone has signed the code of conduct", "CC1.1 CC1.5", 3, Recurrence::annual,
     "People lead"},
    {"hiring", "New people are checked and trained before they get access", "CC1.4", 3,
     Recurrence::event, "People lead"},
    {"inventory", "Systems and data are listed and described", "CC2.1", 3, Recurrence::annual,
     "Engineer"},
    {"policies-known", "Everyone has confirmed the security policies", "CC2.2 CC5.3", 4,
     Recurrence::annual, "People lead"},
    {"contact", "Customers and staff can report a problem, and know how", "CC2.3", 2,
     Recurrence::annual, "Owner"},
    {"goals", "What we promise customers is written down", "CC3.1", 3, Recurrence::annual, "Owner"},
    {"risks", "Risks, fraud among them, are assessed", "CC3.2 CC3.3", 5, Recurrence::annual,
     "Owner"},
    {"new-risks", "A large change gets its own look at risks", "CC3.4", 2, Recurrence::event,
     "Owner"},
    {"self-check", "We test our own controls", "CC4.1", 3, Recurrence::semiannual, "Owner"},
    {"follow-up", "Each finding has a name and a date", "CC4.2", 3, Recurrence::quarterly, "Owner"},
    {"control-choice", "Each risk is answered by a control on this list", "CC5.1 CC5.2", 3,
     Recurrence::annual, "Owner"},
    {"access-granting", "Access is asked for and approved", "CC6.1 CC6.2", 5, Recurrence::event,
     "Engineer"},
    {"access-review", "Every account is matched to a person who needs it", "CC6.2 CC6.3", 8,
     Recurrence::quarterly, "Engineer"},
    {"leavers", "Access ends on the last day", "CC6.2 CC6.3", 5, Recurrence::event, "People lead"},
    {"premises", "Offices and hosting rooms let in only who belongs there", "CC6.4", 2,
     Recurrence::annual, "Owner"},
    {"disposal", "Devices are wiped before they leave", "CC6.5", 2, Recurrence::event, "Engineer"},
    {"boundary", "Only what must be reachable is reachable", "CC6.6", 4, Recurrence::quarterly,
     "Engineer"},
    {"devices", "Laptops are encrypted, behind a firewall, and lock", "CC6.7 CC6.8", 6,
     Recurrence::monthly, "Engineer", CloseBy::os},
    {"encryption", "Data is encrypted under way and at rest", "CC6.1 CC6.7", 4, Recurrence::annual,
     "Engineer"},
    {"vulnerabilities", "Known holes are found and closed in time", "CC7.1", 4, Recurrence::monthly,
     "Engineer"},
    {"watching", "Alerts reach somebody who acts", "CC7.2 CC7.3", 4, Recurrence::monthly,
     "Engineer"},
    {"incidents", "The incident plan is rehearsed", "CC7.3 CC7.4", 5, Recurrence::annual,
     "Engineer"},
    {"recovery", "A backup is restored to prove that it works", "CC7.5", 4, Recurrence::semiannual,
     "Engineer"},
    {"changes", "A second person approves each change", "CC8.1", 4, Recurrence::event, "Engineer"},
    {"continuity", "We know what we do when a site, a person or a supplier fails", "CC9.1", 3,
     Recurrence::annual, "Owner"},
    {"vendors", "Suppliers are assessed", "CC9.2", 3, Recurrence::annual, "Owner"},
}};

std::vector<std::string> ids(std::string_view text) {
    std::vector<std::string> found;
    while (!text.empty()) {
        const auto end = text.find(' ');
        found.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return found;
}

} // namespace

OrganisationList starterList(Starter which) {
    const std::span<const StarterRow> rows = which == Starter::brief
                                                 ? std::span<const StarterRow>(shortRows)
                                                 : std::span<const StarterRow>(longRows);
    OrganisationList list;
    for (const StarterRow& row : rows) {
        list.rows.push_back({.id = std::string(row.id),
                             .title = std::string(row.title),
                             .weight = row.weight,
                             .tsc = ids(row.tsc),
                             .due = row.due,
                             .role = std::string(row.role),
                             .close = row.close,
                             .task = std::string(row.title)});
    }
    return list;
}

} // namespace kelvo
