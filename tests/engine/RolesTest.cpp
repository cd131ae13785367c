#include "base/Sha256.h"

#include "EngineTest.h"

namespace kelvo::test {
namespace {

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

/// Starts with a mesh and the map, and lets somebody in that role verify.
EngineVM& startAs(World& world, const std::string& role) {
    world.writeMesh({{"CC1-ethics", 1, 2}, {"CC6-access", 0.25, 1}, {"CC8-change", 0, 1}});
    world.writeRoles(roles());
    world.start().verifyKYC(role);
    world.transcript();
    return world.engine();
}

class Identity : public EngineTest {};

TEST_F(Identity, IsSealedAndTakesOnTheRole) {
    world.writeRoles(roles());
    world.start();
    world->verifyKYC("Engineer");
    const Totem& totem = world->totems->front();
    EXPECT_TRUE(happened(
        world,
        {"presence Verify your identity — Ada Byron (Engineer)", "totems 1",
         "file collapse-0-#0...totem.json", "principal Ada Byron", "role Engineer",
         R"(status Identity verified: Ada Byron as Engineer. You can now see your responsibilities.)",
         "cite Verified Ada Byron as Engineer | Identity check · HIPR:TouchID:present",
         R"(event {"block":"#0","kind":"kyc","principal":"Ada Byron","role":"Engineer"})",
         "cards Your next task: Sign the code | Sign the code"}));
    EXPECT_EQ(totem.payloadRoot, sha256Hex(R"({"kyc":"Ada Byron","role":"Engineer","tip":")" +
                                           std::string(64, '0') + R"("})"));
    EXPECT_EQ(totem.title, "Identity verified: Ada Byron (Engineer)");
}

TEST_F(Identity, ADenialLeavesThePersonUnknownAndAnEmptyNameIsTheAccountOwner) {
    world.start();
    world.authentication.answer = false;
    world.authentication.kind = Biometry::none;
    world.account.name = "";
    world->verifyKYC("Owner");
    EXPECT_TRUE(happened(
        world,
        {"presence Verify your identity — Account owner (Owner)", "status Identity not verified.",
         R"(event {"kind":"kyc_denied","record":"HIPR:ownerAuth:DENIED","role":"Owner"})"}));
    EXPECT_FALSE(world->principal->has_value());
    world.authentication.answer = true;
    world->verifyKYC("Owner");
    EXPECT_EQ(world->principal->value(), "Account owner");
}

class Roles : public EngineTest {};

TEST_F(Roles, QueriesFollowTheMapAndTheMesh) {
    startAs(world, "Engineer");
    EXPECT_THAT(world->availableRoles(), ElementsAre("Owner", "Engineer", "Auditor"));
    EXPECT_EQ(world->roleControls().size(), 4U);
    EXPECT_EQ(world->roleReadiness(), 0.25);
    EXPECT_EQ(world->nextRoleControl(), accessTask);
    EXPECT_FALSE(world->isRoleControlClosed({"CC7-none", "", ""}));
    EXPECT_FALSE(world->roleReadonly());
    world->verifyKYC("Auditor");
    EXPECT_TRUE(world->roleReadonly());
    EXPECT_EQ(world->humanNBA->title, "Review readiness");
    EXPECT_EQ(world->humanNBA->detail,
              "You have read-only access. Readiness is 56.2% (1/13 met). Re-solve to verify.");
    world->verifyKYC("Nobody's role");
    EXPECT_TRUE(world->roleControls().empty());
    EXPECT_EQ(world->roleReadiness(), *world->readiness);
    EXPECT_EQ(world->humanNBA->title, "Close CC8-change (verify)");
}

class Attestation : public EngineTest {};

TEST_F(Attestation, SealsTheStatementInTheFixedOrder) {
    startAs(world, "Engineer");
    const std::string tip = world->chain().tip();
    world->closeRoleControl(accessTask);
    const Totem& totem = world->totems->front();
    const std::string statement = "Attested by Engineer Ada Byron: Review who has access";
    const std::string root = sha256Hex(statement);
    EXPECT_TRUE(happened(
        world,
        {"presence Acknowledge: Review who has access", "mesh 2 met", "readiness 75.0%", "totems 2",
         "file control-1-#1...totem.json",
         "status Acknowledged: Review who has access. Your completion is now 50.0%.",
         "cite Engineer Ada Byron acknowledged CC6-access: Review who has access [" +
             root.substr(0, 12) + "] | presence HIPR:TouchID:present · role attest",
         R"(event {"block":"#1","criterion":"CC6-access","kind":"attest_role_control","role":"Engineer"})",
         "cards Your next task: Not in the mesh | Not in the mesh"}));
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

TEST_F(Attestation, RefusalsAskForNothingAndChangeNothing) {
    startAs(world, "Engineer");
    world->attestRoleControl({"CC7-none", "Not in the mesh", "attest"});
    EXPECT_TRUE(happened(world, {"status Unknown criterion CC7-none."}));
    world->attestRoleControl({"CC1-ethics", "Sign the code", "attest"});
    EXPECT_TRUE(happened(world, {"status CC1-ethics already met."}));
    world.authentication.answer = false;
    world->closeRoleControl(accessTask);
    EXPECT_TRUE(happened(
        world,
        {"presence Acknowledge: Review who has access",
         "status Not verified — CC6-access unchanged. HIPR:TouchID:DENIED",
         R"(event {"criterion":"CC6-access","kind":"attest_denied","record":"HIPR:TouchID:DENIED"})"}));
    world->closeRoleControl({"CC8-change", "Write it down", "generate"});
    EXPECT_EQ(*world->status, "Writing policy for CC8-change on-device…");

    World readOnly;
    startAs(readOnly, "Auditor").closeRoleControl(accessTask);
    EXPECT_TRUE(happened(readOnly, {}));
}

TEST_F(Attestation, BeforeAnyIdentityTheStatementNamesAContributor) {
    world.writeMesh({{"CC6-access", 0, 1}});
    world.start();
    world->attestRoleControl(accessTask);
    const Json record = world.record(0);
    EXPECT_EQ(record.at("evidence_summary"), "Attested by contributor user: Review who has access");
    EXPECT_EQ(record.at("owner"), "unverified");
    EXPECT_EQ(record.at("role"), "contributor");
}

} // namespace
} // namespace kelvo::test
