#include "base/Sha256.h"

#include "EngineTest.h"

namespace kelvo::test {
namespace {

const RoleMap::Control task{"CC6-device", "Secure the laptop", "os"};

class DevicePosture : public EngineTest {
protected:
    DevicePosture() {
        world.writeMesh({{"CC6-device", 0, 1}, {"CC7-logs", 1, 1}});
        world.start();
    }
};

TEST_F(DevicePosture, ASecureDeviceClosesTheControlWithItsReadings) {
    world.processes.outputs["csrutil status"] = "status: off";
    const std::string tip = world->chain().tip();
    world->closeRoleControl(task);
    const std::string summary =
        "Device posture OK: FileVault disk encryption=on; Application firewall=on; "
        "Password required after sleep/screensaver=yes";
    const Totem& totem = world->totems->front();
    EXPECT_TRUE(happened(
        world,
        {"facts 5", R"(event {"count":5,"kind":"os_snapshot","ok":4})",
         "presence Confirm: this device is secure — Secure the laptop", "mesh 2 met",
         "readiness 100.0%", "totems 1", "file control-0-#0...totem.json",
         "status Device secured for CC6-device. Your completion is now 100.0%.",
         "cite contributor user secured device for CC6-device: " + summary +
             " | OS snapshot (read-only) · presence HIPR:TouchID:present",
         R"(event {"block":"#0","criterion":"CC6-device","kind":"os_close_role_control","role":"contributor"})",
         "cards *"}));
    EXPECT_EQ(totem.title, "Secured device for CC6-device");
    const std::string payload =
        R"({"attested_at":"2026-01-31T09:15:02Z","close_method":"os","criterion":"CC6-device",)"
        R"("evidence_name":"device-posture-CC6-device.txt","evidence_root":")" +
        sha256Hex(summary) +
        R"(","evidence_summary":"Device posture OK: FileVault disk encryption=on; Application firewall=on; )"
        R"(Password required after sleep\/screensaver=yes","gate_after":1,"gate_before":0,"os_attested":true,)"
        R"("owner":"unverified","presence":"HIPR:TouchID:present","readiness_after":1,"readiness_before":0.5,)"
        R"("role":"contributor","sourceDb":"control","tip":")" +
        tip + R"("})";
    EXPECT_EQ(totem.payloadRoot, sha256Hex(payload)) << payload;
}

TEST_F(DevicePosture, AnInsecureDeviceIsReportedBeforeTheCriterionIsLookedAt) {
    world.processes.outputs["fdesetup status"] = "FileVault is Off.";
    world.processes.outputs.erase("defaults globalstate");
    world->closeRoleControl({"no such criterion", "", "os"});
    EXPECT_TRUE(happened(
        world,
        {"facts 5", R"(event {"count":5,"kind":"os_snapshot","ok":3})",
         "status Device not yet secure — turn on: FileVault disk encryption, Application "
         "firewall.",
         R"(event {"bad":"FileVault disk encryption, Application firewall","criterion":"no such criterion","kind":"os_close_blocked"})"}));
    world.processes.secure();
    for (const char* criterion : {"no such criterion", "CC7-logs"}) {
        world->closeRoleControlViaOS({criterion, "", "os"});
        EXPECT_EQ(*world->status, std::string(criterion) + " already met.");
    }
    EXPECT_TRUE(world.authentication.reasons.empty());
}

TEST_F(DevicePosture, ADenialChangesOnlyTheFacts) {
    world.authentication.answer = false;
    world->closeRoleControlViaOS(task);
    EXPECT_TRUE(happened(
        world,
        {"facts 5", R"(event {"count":5,"kind":"os_snapshot","ok":5})",
         "presence Confirm: this device is secure — Secure the laptop",
         "status Not verified — CC6-device unchanged. HIPR:TouchID:DENIED",
         R"(event {"criterion":"CC6-device","kind":"os_close_denied","record":"HIPR:TouchID:DENIED"})"}));
    EXPECT_EQ(world->metCount(), 1);
}

} // namespace
} // namespace kelvo::test
