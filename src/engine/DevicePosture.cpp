#include "base/Text.h"
#include "engine/EngineVM.h"

#include <algorithm>

namespace kelvo {

void EngineVM::snapshotOSNow(const Turn&) {
    refreshFacts();
}

void EngineVM::refreshFacts() {
    osFacts.set(OSSnapshot::read(ports_.processes));
    const auto secure =
        std::count_if(osFacts->begin(), osFacts->end(), [](const OSFact& fact) { return fact.ok; });
    log_.e("os_snapshot", {{"count", osFacts->size()}, {"ok", secure}});
}

void EngineVM::closeRoleControlViaOSNow(const Turn& turn, const RoleMap::Control& control) {
    const Exclusive exclusive(turn);
    refreshFacts();
    std::vector<std::string> readings;
    std::vector<std::string> insecure;
    for (const OSFact& fact : *osFacts) {
        if (!OSSnapshot::isRequired(fact)) continue;
        readings.push_back(fact.key + "=" + fact.value);
        if (!fact.ok) insecure.push_back(fact.key);
    }
    if (readings.empty() || !insecure.empty()) {
        const std::string bad = joined(insecure, ", ");
        // Fixed text, see docs/decisions.md.
        refuse("Device not yet secure — turn on: " +
                   (bad.empty() ? "FileVault, firewall, screen-lock" : bad) + ".",
               "os_close_blocked", {{"criterion", control.criterion}, {"bad", bad}});
        return;
    }
    const SOC2Mesh::Node* node = criterionNode(control.criterion);
    if (node == nullptr || node->g >= 1.0) {
        status.set(control.criterion + " already met.");
        return;
    }
    const Presence::Result presence =
        provePresence(exclusive, "Confirm: this device is secure — " + control.task);
    if (!presence.ok) {
        refuse("Not verified — " + control.criterion + " unchanged. " + presence.record,
               "os_close_denied", {{"criterion", control.criterion}, {"record", presence.record}});
        return;
    }
    const std::string summary = "Device posture OK: " + joined(readings, "; ");
    Closing closing{
        .facts = {.criterion = control.criterion,
                  .presence = presence.record,
                  .evidenceName = "device-posture-" + control.criterion + ".txt"},
        .title = "Secured device for " + control.criterion,
        .evidence = keeper_->vault().stage(summary),
        .extra = {{"role", contributorRole()},
                  {"evidence_summary", summary},
                  {"os_attested", true},
                  {"close_method", "os"}},
    };
    closeCriterion(closing);
    status.set("Device secured for " + control.criterion + ". Your completion is now " +
               percent(roleReadiness()) + ".");
    cite(contributorRole() + " " + personName() + " secured device for " + control.criterion +
             ": " + summary,
         "OS snapshot (read-only) · presence " + presence.record);
    log_.e("os_close_role_control", {{"criterion", control.criterion},
                                     {"role", contributorRole()},
                                     {"block", closing.totem.blockHash}});
    proposeNBA();
}

} // namespace kelvo
