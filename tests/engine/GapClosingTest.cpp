#include "base/Sha256.h"
#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

const std::string evidenceSha = sha256Hex("reviewed\n");

test::World& withEvidence(test::World& world) {
    world.filePanel.choice = world.write("review é.txt", "reviewed\n");
    return world;
}

TEST(CloseGap, SealsInTheFixedOrderWithTheWholePayload) {
    test::World world;
    EngineVM& vm = withEvidence(world).startAsOwner({{"A", 0.5, 1, "x GAP: a"}, {"B", 0, 3, "y"}});
    const std::string tip = vm.chain().tip();
    vm.closeGap("B");
    const Totem& totem = vm.totems->front();
    const std::string name = "control-1-" + totem.blockHash.substr(0, 12) + ".totem.json";
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "panel Attach evidence", "presence Close B — verify to mark this criterion met",
            "mesh 1 met", "readiness 87.5%", "totems 2", "file " + name,
            "status Closed B: readiness 12.5%→87.5%.",
            "cite Closed B with evidence review é.txt [" + evidenceSha.substr(0, 12) +
                "] — readiness 12.5%→87.5% | owner Ada Byron · presence HIPR:TouchID:present",
            R"(event {"block":")" + totem.blockHash +
                R"(","criterion":"B","gate_after":1,"gate_before":0,"kind":"close_gap","readiness_after":0.875})",
            StartsWith("cards Close A — a (+12.5%)")));
    const std::string payload =
        R"({"attested_at":"2026-01-31T09:15:02Z","criterion":"B","evidence_name":"review é.txt","evidence_root":")" +
        evidenceSha + R"(","gate_after":1,"gate_before":0,"owner":"Ada Byron","presence":)" +
        R"("HIPR:TouchID:present","readiness_after":0.875,"readiness_before":0.125,"sourceDb":"control","tip":")" +
        tip + R"("})";
    EXPECT_EQ(totem.payloadRoot, sha256Hex(payload)) << payload;
    EXPECT_EQ(totem.title, "Closed B");
    EXPECT_EQ(world.filePanel.requests.back().message, "Select an evidence artifact to close B");
}

TEST(CloseGap, ARefusalChangesNothingButStatusAndEvent) {
    test::World world;
    EngineVM& vm = withEvidence(world).startAsOwner({{"A", 0.5, 1}});
    const auto file = world.filePanel.choice;
    const auto before = world.files();

    vm.closeGap("no such criterion");
    EXPECT_THAT(world.transcript(), ElementsAre());

    world.filePanel.choice = std::nullopt;
    vm.closeGap("A");
    EXPECT_THAT(world.transcript(),
                ElementsAre("panel Attach evidence",
                            "status Evidence required to close A — no artifact selected.",
                            R"(event {"criterion":"A","kind":"close_gap_no_evidence"})"));
    world.filePanel.choice = world.outputs();
    vm.closeGap("A");
    EXPECT_THAT(world.transcript(),
                ElementsAre("panel Attach evidence",
                            "status Evidence required to close A — could not read artifact.",
                            R"(event {"criterion":"A","kind":"close_gap_evidence_unreadable"})"));
    world.filePanel.choice = file;
    world.authentication.answer = false;
    vm.closeGap("A");
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "panel Attach evidence", "presence Close A — verify to mark this criterion met",
            "status Not verified — A unchanged. HIPR:TouchID:DENIED",
            R"(event {"criterion":"A","kind":"close_gap_denied","record":"HIPR:TouchID:DENIED"})"));
    EXPECT_EQ(*vm.readiness, 0.5);
    EXPECT_EQ(vm.totems->size(), 1U);
    EXPECT_EQ(world.files(), before);
}

TEST(CloseGap, AMetCriterionIsSealedAgainAndAHighGateComesDownToOne) {
    test::World world;
    EngineVM& vm = withEvidence(world).startAsOwner({{"A", 1.5, 1}, {"B", 0, 1}, {"B", 0, 2}});
    vm.closeGap("A");
    EXPECT_EQ(world.record(1).at("gate_before"), 1.5);
    EXPECT_EQ(*vm.status, "Closed A: readiness 37.5%→25.0%.");
    vm.closeGap("B");
    EXPECT_EQ(*vm.readiness, 0.5) << "of repeated ids the first is closed";
}

TEST(CloseGap, AnUnverifiedPersonsSealSaysSo) {
    test::World world;
    world.writeMesh({{"A"}});
    EngineVM& vm = withEvidence(world).start();
    vm.closeGap("A");
    EXPECT_EQ(world.record(0).at("owner"), "unverified");
    EXPECT_EQ(vm.citations->front().source, "owner unverified · presence HIPR:TouchID:present");
}

TEST(CloseGap, ReadinessAfterARestartIsReadinessBeforeIt) {
    test::World world;
    std::vector<test::World::Criterion> criteria;
    for (int i = 0; i < 13; ++i) {
        criteria.push_back({"CC" + std::to_string(i), i % 3 * 0.3, i % 5 + 1, "e GAP: g"});
    }
    EngineVM& vm = withEvidence(world).startAsOwner(criteria);
    for (const int i : {3, 0, 12, 7})
        vm.closeGap("CC" + std::to_string(i));
    const double readiness = *vm.readiness;
    const SOC2Mesh mesh = **vm.mesh;
    EngineVM& again = world.start();
    EXPECT_EQ(*again.readiness, readiness);
    EXPECT_EQ((*again.mesh)->nodes, mesh.nodes);
    EXPECT_TRUE(again.totems->empty()) << "the chain begins anew with each run";
    const auto citations = *again.citations;
    EXPECT_THAT(citations[0].claim, StartsWith("Replayed 4 sealed gap-closes → readiness "));
}

TEST(CloseGap, ALargeFileIsHashedInPiecesWithProgressShown) {
    test::World world;
    EngineVM& vm = world.startAsOwner({{"A"}});
    const auto file = world.write("big.bin", "");
    std::filesystem::resize_file(file, std::uintmax_t{80} << 20);
    world.filePanel.choice = file;
    bool ticked = false;
    vm.play();
    world.eventLoop.duringPass = [&] { ticked = ticked || (world.ticker.fire(), *vm.t > 0); };
    world.transcript();
    vm.closeGap("A");
    EXPECT_EQ(world.eventLoop.passes, 5);
    EXPECT_FALSE(ticked) << "no tick comes between the choice and the seal";
    const auto lines = world.transcript();
    EXPECT_EQ(lines[1], "progress Reading big.bin 20.0%");
    EXPECT_EQ(lines[6], "progress none");
    EXPECT_EQ(world.record(1).at("evidence_root"),
              sha256Hex(std::string(std::size_t{80} << 20, '\0')));
}

TEST(Run, DispatchesEachAct) {
    test::World world;
    world.writeRoles({{{"role", "Engineer"}, {"readonly", false}}});
    world.writeMesh({{"A"}});
    EngineVM& vm = withEvidence(world).start();
    vm.run({Act::Kind::play});
    EXPECT_TRUE(*vm.running);
    vm.run({Act::Kind::pause});
    EXPECT_FALSE(*vm.running);
    vm.run({Act::Kind::bond});
    EXPECT_EQ(vm.totems->size(), 1U);
    vm.run({Act::Kind::throttle});
    EXPECT_EQ(*vm.drive, 0.5);
    vm.run({Act::Kind::kyc});
    EXPECT_EQ(vm.role->value(), "Engineer") << "the first role of the map";
    vm.verifyKYC("Owner");
    vm.run({Act::Kind::kyc});
    EXPECT_EQ(vm.role->value(), "Owner") << "the role that is set";
    vm.run({Act::Kind::snapshot});
    EXPECT_EQ(world.eventKinds().back(), "os_snapshot");
    vm.run({Act::Kind::closeGap, "A"});
    EXPECT_EQ(*vm.readiness, 1.0);
    vm.run({Act::Kind::generate, "A"});
    EXPECT_EQ(*vm.status, "Writing policy for A on-device…");
    test::World bare;
    bare.start().run({Act::Kind::kyc});
    EXPECT_EQ(bare.engine().role->value(), "Owner");
}

} // namespace
} // namespace kelvo
