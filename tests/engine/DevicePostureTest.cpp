#include "base/Sha256.h"
#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

const RoleMap::Control task{"CC6-device", "Secure the laptop", "os"};

EngineVM& start(test::World& world) {
    world.writeMesh({{"CC6-device", 0, 1}, {"CC7-logs", 1, 1}});
    EngineVM& vm = world.start();
    world.transcript();
    return vm;
}

TEST(DevicePosture, ASecureDeviceClosesTheControlWithItsReadings) {
    test::World world;
    EngineVM& vm = start(world);
    world.processes.outputs["csrutil status"] = "status: off";
    const std::string tip = vm.chain().tip();
    vm.closeRoleControl(task);
    const std::string summary =
        "Device posture OK: FileVault disk encryption=on; Application firewall=on; "
        "Password required after sleep/screensaver=yes";
    const Totem& totem = vm.totems->front();
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "facts 5", R"(event {"count":5,"kind":"os_snapshot","ok":4})",
            "presence Confirm: this device is secure — Secure the laptop", "mesh 2 met",
            "readiness 100.0%", "totems 1", StartsWith("file control-0-"),
            "status Device secured for CC6-device. Your completion is now 100.0%.",
            "cite contributor user secured device for CC6-device: " + summary +
                " | OS snapshot (read-only) · presence HIPR:TouchID:present",
            R"(event {"block":")" + totem.blockHash +
                R"(","criterion":"CC6-device","kind":"os_close_role_control","role":"contributor"})",
            StartsWith("cards ")));
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

TEST(DevicePosture, AnInsecureDeviceIsReportedBeforeTheCriterionIsLookedAt) {
    test::World world;
    EngineVM& vm = start(world);
    world.processes.outputs["fdesetup status"] = "FileVault is Off.";
    world.processes.outputs.erase("defaults globalstate");
    vm.closeRoleControl({"no such criterion", "", "os"});
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "facts 5", R"(event {"count":5,"kind":"os_snapshot","ok":3})",
            "status Device not yet secure — turn on: FileVault disk encryption, Application "
            "firewall.",
            R"(event {"bad":"FileVault disk encryption, Application firewall","criterion":"no such criterion","kind":"os_close_blocked"})"));
    world.processes.secure();
    for (const char* criterion : {"no such criterion", "CC7-logs"}) {
        vm.closeRoleControlViaOS({criterion, "", "os"});
        EXPECT_EQ(*vm.status, std::string(criterion) + " already met.");
    }
    EXPECT_TRUE(world.authentication.reasons.empty());
}

TEST(DevicePosture, ADenialChangesOnlyTheFacts) {
    test::World world;
    EngineVM& vm = start(world);
    world.authentication.answer = false;
    vm.closeRoleControlViaOS(task);
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "facts 5", R"(event {"count":5,"kind":"os_snapshot","ok":5})",
            "presence Confirm: this device is secure — Secure the laptop",
            "status Not verified — CC6-device unchanged. HIPR:TouchID:DENIED",
            R"(event {"criterion":"CC6-device","kind":"os_close_denied","record":"HIPR:TouchID:DENIED"})"));
    EXPECT_EQ(vm.metCount(), 1);
}

} // namespace
} // namespace kelvo
