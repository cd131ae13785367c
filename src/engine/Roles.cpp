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

void EngineVM::verifyKYC(const std::string& chosenRole) {
    if (deferred([this, chosenRole] { verifyKYC(chosenRole); })) return;
    const WorkQueue::Exclusive exclusive(queue_);
    const std::string name = accountName();
    const Presence::Result presence =
        presence_.require("Verify your identity — " + name + " (" + chosenRole + ")");
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

void EngineVM::leaveIdentity() {
    if (deferred([this] { leaveIdentity(); })) return;
    principal.set(std::nullopt);
    role.set(std::nullopt);
    proposeNBA();
}

void EngineVM::closeRoleControl(const RoleMap::Control& control) {
    if (deferred([this, control] { closeRoleControl(control); })) return;
    if (roleReadonly()) return;
    if (control.close == "os") return closeRoleControlViaOS(control);
    if (control.close == "generate") return generatePolicy(control.criterion);
    attestRoleControl(control);
}

void EngineVM::attestRoleControl(const RoleMap::Control& control) {
    if (deferred([this, control] { attestRoleControl(control); })) return;
    const SOC2Mesh::Node* node = criterionNode(control.criterion);
    if (node == nullptr) {
        status.set("Unknown criterion " + control.criterion + ".");
        return;
    }
    if (node->g >= 1.0) {
        status.set(control.criterion + " already met.");
        return;
    }
    const WorkQueue::Exclusive exclusive(queue_);
    const Presence::Result presence = presence_.require("Acknowledge: " + control.task);
    if (!presence.ok) {
        refuse("Not verified — " + control.criterion + " unchanged. " + presence.record,
               "attest_denied", {{"criterion", control.criterion}, {"record", presence.record}});
        return;
    }
    const std::string roleName = contributorRole();
    const std::string statement =
        "Attested by " + roleName + " " + personName() + ": " + control.task;
    const StagedEvidence evidence = keeper_->vault().stage(statement);
    const Closure closure = closeCriterion({
        .criterion = control.criterion,
        .title = "Acknowledged " + control.criterion,
        .presence = presence.record,
        .evidence = evidence,
        .evidenceName = "role-attest-" + control.criterion + ".txt",
        .extra = {{"role", roleName},
                  {"evidence_summary", statement},
                  {"attested", true},
                  {"close_method", "attest"}},
    });
    status.set("Acknowledged: " + control.task + ". Your completion is now " +
               percent(roleReadiness()) + ".");
    cite(roleName + " " + personName() + " acknowledged " + control.criterion + ": " +
             control.task + " [" + evidence.root().substr(0, 12) + "]",
         "presence " + presence.record + " · role attest");
    log_.e(
        "attest_role_control",
        {{"criterion", control.criterion}, {"role", roleName}, {"block", closure.totem.blockHash}});
    proposeNBA();
}

} // namespace kelvo
