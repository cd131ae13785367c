#include "base/Sha256.h"
#include "base/Text.h"
#include "engine/EngineVM.h"

#include <algorithm>

namespace kelvo {

void EngineVM::loadRoleMap() {
    auto loaded = RoleMap::load(directories_.outputs / "roles-bondgraph.json");
    if (!loaded) {
        log_.e("rolemap_load_failed", {{"error", loaded.error()}});
        return;
    }
    const std::string names = joined(loaded->roleNames(), ", ");
    const std::size_t count = loaded->roles.size();
    roleMap.set(std::move(*loaded));
    cite("Loaded role map: " + std::to_string(count) + " roles (" + names + ")",
         "kernel RoleMap.load · role → SOC 2 controls");
    log_.e("rolemap_loaded", {{"roles", count}});
}

std::vector<std::string> EngineVM::availableRoles() const {
    return *roleMap ? (*roleMap)->roleNames() : std::vector<std::string>{};
}

std::vector<std::string> EngineVM::offeredRoles() const {
    return *roleMap ? (*roleMap)->rolesFor(accountName()) : std::vector<std::string>{};
}

std::string EngineVM::whyNoRole() const {
    if (!offeredRoles().empty()) return "";
    return availableRoles().empty() ? "No roles are defined"
                                    : "No role is meant for " + accountName();
}

std::string EngineVM::accountName() const {
    std::string name = ports_.account.fullName();
    return name.empty() ? "Account owner" : name;
}

std::vector<RoleMap::Control> EngineVM::roleControls() const {
    if (!*role || !*roleMap) return {};
    return (*roleMap)->controlsFor(**role);
}

bool EngineVM::isRoleControlClosed(const RoleMap::Control& control) const {
    const SOC2Mesh::Node* node = criterionNode(control.criterion);
    return node != nullptr && node->g >= 1.0;
}

double EngineVM::roleReadiness() const {
    const auto controls = roleControls();
    if (controls.empty()) return *readiness;
    const auto closed =
        std::count_if(controls.begin(), controls.end(),
                      [this](const auto& control) { return isRoleControlClosed(control); });
    return static_cast<double>(closed) / static_cast<double>(controls.size());
}

bool EngineVM::roleReadonly() const {
    if (!*role || !*roleMap) return false;
    const RoleMap::Role* entry = (*roleMap)->role(**role);
    return entry != nullptr && entry->readonly;
}

std::optional<RoleMap::Control> EngineVM::nextRoleControl() const {
    for (const RoleMap::Control& control : roleControls()) {
        if (!isRoleControlClosed(control)) return control;
    }
    return std::nullopt;
}

void EngineVM::verifyKYCNow(const Turn& turn, const std::string& chosenRole) {
    const Exclusive exclusive(turn);
    const std::string name = accountName();
    const Presence::Result presence =
        provePresence(exclusive, "Verify your identity — " + name + " (" + chosenRole + ")");
    if (!presence.ok) {
        refuse("Identity not verified.", "kyc_denied",
               {{"record", presence.record}, {"role", chosenRole}});
        return;
    }
    const Json payload = {{"kyc", name}, {"role", chosenRole}, {"tip", chain_.tip()}};
    const Totem totem = seal(payload, "Identity verified: " + name + " (" + chosenRole + ")",
                             presence.record, now());
    principal.set(name);
    role.set(chosenRole);
    status.set("Identity verified: " + name + " as " + chosenRole +
               ". You can now see your responsibilities.");
    cite("Verified " + name + " as " + chosenRole, "Identity check · " + presence.record);
    log_.e("kyc", {{"principal", name}, {"role", chosenRole}, {"block", totem.blockHash}});
    proposeNBA();
}

void EngineVM::leaveIdentityNow(const Turn&) {
    principal.set(std::nullopt);
    role.set(std::nullopt);
    proposeNBA();
}

void EngineVM::closeRoleControlNow(const Turn& turn, const RoleMap::Control& control) {
    if (roleReadonly()) return;
    if (control.close == "os") return closeRoleControlViaOSNow(turn, control);
    if (control.close == "generate") return generatePolicyNow(turn, control.criterion);
    attestRoleControlNow(turn, control);
}

void EngineVM::attestRoleControlNow(const Turn& turn, const RoleMap::Control& control) {
    const SOC2Mesh::Node* node = criterionNode(control.criterion);
    if (node == nullptr) {
        status.set("Unknown criterion " + control.criterion + ".");
        return;
    }
    if (node->g >= 1.0) {
        status.set(control.criterion + " already met.");
        return;
    }
    const Exclusive exclusive(turn);
    const Presence::Result presence = provePresence(exclusive, "Acknowledge: " + control.task);
    if (!presence.ok) {
        refuse("Not verified — " + control.criterion + " unchanged. " + presence.record,
               "attest_denied", {{"criterion", control.criterion}, {"record", presence.record}});
        return;
    }
    const std::string roleName = contributorRole();
    const std::string statement =
        "Attested by " + roleName + " " + personName() + ": " + control.task;
    const StagedEvidence evidence = keeper_->vault().stage(statement);
    Closing closing{
        .facts = {.criterion = control.criterion,
                  .presence = presence.record,
                  .evidenceName = "role-attest-" + control.criterion + ".txt"},
        .title = "Acknowledged " + control.criterion,
        .evidence = evidence,
        .extra = {{"role", roleName},
                  {"evidence_summary", statement},
                  {"attested", true},
                  {"close_method", "attest"}},
    };
    closeCriterion(closing);
    status.set("Acknowledged: " + control.task + ". Your completion is now " +
               percent(roleReadiness()) + ".");
    cite(roleName + " " + personName() + " acknowledged " + control.criterion + ": " +
             control.task + " [" + abbreviated(evidence.root()) + "]",
         "presence " + presence.record + " · role attest");
    log_.e(
        "attest_role_control",
        {{"criterion", control.criterion}, {"role", roleName}, {"block", closing.totem.blockHash}});
    proposeNBA();
}

} // namespace kelvo
