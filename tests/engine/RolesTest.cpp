#include "base/Sha256.h"
#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

const RoleMap::Control accessTask{"CC6-access", "Review who has access", "attest"};

Json roles() {
    return {
        {{"role", "Owner"}, {"readonly", false}},
        {{"role", "Engineer"},
         {"readonly", false},
         {"controls",
          {{{"criterion", "CC1-ethics"}, {"task", "Sign the code"}, {"close", "attest"}},
           {{"criterion", "CC6-access"}, {"task", "Review who has access"}, {"close", "attest"}},
           {{"criterion", "CC7-none"}, {"task", "Not in the mesh"}, {"close", "attest"}},
           {{"criterion", "CC8-change"}, {"task", "Write it down"}, {"close", "generate"}}}}},
        {{"role", "Auditor"}, {"readonly", true}, {"criteria", {"CC1-ethics"}}}};
}

EngineVM& startAs(test::World& world, const std::string& role) {
    world.writeMesh({{"CC1-ethics", 1, 2}, {"CC6-access", 0.25, 1}, {"CC8-change", 0, 1}});
    world.writeRoles(roles());
    EngineVM& vm = world.start();
    vm.verifyKYC(role);
    world.transcript();
    return vm;
}

TEST(Identity, IsSealedAndTakesOnTheRole) {
    test::World world;
    world.writeRoles(roles());
    EngineVM& vm = world.start();
    vm.verifyKYC("Engineer");
    const Totem& totem = vm.totems->front();
    const std::string block = totem.blockHash;
    EXPECT_THAT(
        world.transcript(),
        ElementsAre("presence Verify your identity — Ada Byron (Engineer)", "totems 1",
                    "file collapse-0-" + block.substr(0, 12) + ".totem.json", "principal Ada Byron",
                    "role Engineer",
                    "status Identity verified: Ada Byron as Engineer. You can now see your "
                    "responsibilities.",
                    "cite Verified Ada Byron as Engineer | Identity check · HIPR:TouchID:present",
                    R"(event {"block":")" + block +
                        R"(","kind":"kyc","principal":"Ada Byron","role":"Engineer"})",
                    "cards Your next task: Sign the code | Sign the code"));
    EXPECT_EQ(totem.payloadRoot, sha256Hex(R"({"kyc":"Ada Byron","role":"Engineer","tip":")" +
                                           std::string(64, '0') + R"("})"));
    EXPECT_EQ(totem.title, "Identity verified: Ada Byron (Engineer)");
}

TEST(Identity, ADenialLeavesThePersonUnknownAndAnEmptyNameIsTheAccountOwner) {
    test::World world;
    EngineVM& vm = world.start();
    world.authentication.answer = false;
    world.authentication.kind = Biometry::none;
    world.account.name = "";
    vm.verifyKYC("Owner");
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "presence Verify your identity — Account owner (Owner)",
            "status Identity not verified.",
            R"(event {"kind":"kyc_denied","record":"HIPR:ownerAuth:DENIED","role":"Owner"})"));
    EXPECT_FALSE(vm.principal->has_value());
    world.authentication.answer = true;
    vm.verifyKYC("Owner");
    EXPECT_EQ(vm.principal->value(), "Account owner");
}

TEST(Roles, QueriesFollowTheMapAndTheMesh) {
    test::World world;
    EngineVM& vm = startAs(world, "Engineer");
    EXPECT_THAT(vm.availableRoles(), ElementsAre("Owner", "Engineer", "Auditor"));
    EXPECT_EQ(vm.roleControls().size(), 4U);
    EXPECT_EQ(vm.roleReadiness(), 0.25);
    EXPECT_EQ(vm.nextRoleControl(), accessTask);
    EXPECT_FALSE(vm.isRoleControlClosed({"CC7-none", "", ""}));
    EXPECT_FALSE(vm.roleReadonly());
    vm.verifyKYC("Auditor");
    EXPECT_TRUE(vm.roleReadonly());
    EXPECT_EQ(vm.humanNBA->title, "Review readiness");
    EXPECT_EQ(vm.humanNBA->detail,
              "You have read-only access. Readiness is 56.2% (1/13 met). Re-solve to verify.");
    vm.verifyKYC("Nobody's role");
    EXPECT_TRUE(vm.roleControls().empty());
    EXPECT_EQ(vm.roleReadiness(), *vm.readiness);
    EXPECT_EQ(vm.humanNBA->title, "Close CC8-change (verify)");
}

TEST(Attestation, SealsTheStatementInTheFixedOrder) {
    test::World world;
    EngineVM& vm = startAs(world, "Engineer");
    const std::string tip = vm.chain().tip();
    vm.closeRoleControl(accessTask);
    const Totem& totem = vm.totems->front();
    const std::string statement = "Attested by Engineer Ada Byron: Review who has access";
    const std::string root = sha256Hex(statement);
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "presence Acknowledge: Review who has access", "mesh 2 met", "readiness 75.0%",
            "totems 2", StartsWith("file control-1-"),
            "status Acknowledged: Review who has access. Your completion is now 50.0%.",
            "cite Engineer Ada Byron acknowledged CC6-access: Review who has access [" +
                root.substr(0, 12) + "] | presence HIPR:TouchID:present · role attest",
            R"(event {"block":")" + totem.blockHash +
                R"(","criterion":"CC6-access","kind":"attest_role_control","role":"Engineer"})",
            "cards Your next task: Not in the mesh | Not in the mesh"));
    EXPECT_EQ(totem.title, "Acknowledged CC6-access");
    const std::string payload =
        R"({"attested":true,"attested_at":"2026-01-31T09:15:02Z","close_method":"attest","criterion":"CC6-access",)"
        R"("evidence_name":"role-attest-CC6-access.txt","evidence_root":")" +
        root + R"(","evidence_summary":")" + statement +
        R"(","gate_after":1,"gate_before":0.25,"owner":"Ada Byron","presence":"HIPR:TouchID:present",)"
        R"("readiness_after":0.75,"readiness_before":0.5625,"role":"Engineer","sourceDb":"control","tip":")" +
        tip + R"("})";
    EXPECT_EQ(totem.payloadRoot, sha256Hex(payload)) << payload;
}

TEST(Attestation, RefusalsAskForNothingAndChangeNothing) {
    test::World world;
    EngineVM& vm = startAs(world, "Engineer");
    vm.attestRoleControl({"CC7-none", "Not in the mesh", "attest"});
    EXPECT_THAT(world.transcript(), ElementsAre("status Unknown criterion CC7-none."));
    vm.attestRoleControl({"CC1-ethics", "Sign the code", "attest"});
    EXPECT_THAT(world.transcript(), ElementsAre("status CC1-ethics already met."));
    world.authentication.answer = false;
    vm.closeRoleControl(accessTask);
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "presence Acknowledge: Review who has access",
            "status Not verified — CC6-access unchanged. HIPR:TouchID:DENIED",
            R"(event {"criterion":"CC6-access","kind":"attest_denied","record":"HIPR:TouchID:DENIED"})"));
    vm.closeRoleControl({"CC8-change", "Write it down", "generate"});
    EXPECT_EQ(*vm.status, "Writing policy for CC8-change on-device…");

    test::World readOnly;
    EngineVM& auditor = startAs(readOnly, "Auditor");
    auditor.closeRoleControl(accessTask);
    EXPECT_THAT(readOnly.transcript(), ElementsAre());
}

TEST(Attestation, BeforeAnyIdentityTheStatementNamesAContributor) {
    test::World world;
    world.writeMesh({{"CC6-access", 0, 1}});
    EngineVM& vm = world.start();
    vm.attestRoleControl(accessTask);
    const Json record = world.record(0);
    EXPECT_EQ(record.at("evidence_summary"), "Attested by contributor user: Review who has access");
    EXPECT_EQ(record.at("owner"), "unverified");
    EXPECT_EQ(record.at("role"), "contributor");
}

} // namespace
} // namespace kelvo
