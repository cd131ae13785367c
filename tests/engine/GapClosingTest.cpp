#include "base/Sha256.h"

#include "EngineTest.h"

namespace kelvo::test {
namespace {

const std::string evidenceSha = sha256Hex("reviewed\n");

class CloseGap : public EngineTest {
protected:
    CloseGap() { world.filePanel.choice = world.write("review é.txt", "reviewed\n"); }
};

TEST_F(CloseGap, SealsInTheFixedOrderWithTheWholePayload) {
    world.startAsOwner({{"A", 0.5, 1, "x GAP: a"}, {"B", 0, 3, "y"}});
    const std::string tip = world->chain().tip();
    world->closeGap("B");
    const Totem& totem = world->totems->front();
    EXPECT_TRUE(happened(
        world,
        {"panel Attach evidence", "presence Close B — verify to mark this criterion met",
         "mesh 1 met", "readiness 87.5%", "totems 2", "file control-1-#1...totem.json",
         "status Closed B: readiness 12.5%→87.5%.",
         "cite Closed B with evidence review é.txt [" + evidenceSha.substr(0, 12) +
             "] — readiness 12.5%→87.5% | owner Ada Byron · presence HIPR:TouchID:present",
         R"(event {"block":"#1","criterion":"B","gate_after":1,"gate_before":0,"kind":"close_gap","readiness_after":0.875})",
         "cards Close A — a (+12.5%)*"}));
    const std::string payload =
        R"({"attested_at":"2026-01-31T09:15:02Z","criterion":"B","evidence_name":"review é.txt","evidence_root":")" +
        evidenceSha + R"(","gate_after":1,"gate_before":0,"owner":"Ada Byron","presence":)" +
        R"("HIPR:TouchID:present","readiness_after":0.875,"readiness_before":0.125,"sourceDb":"control","tip":")" +
        tip + R"("})";
    EXPECT_EQ(totem.payloadRoot, sha256Hex(payload)) << payload;
    EXPECT_EQ(totem.title, "Closed B");
    EXPECT_EQ(world.filePanel.requests.back().message, "Select an evidence artifact to close B");
}

TEST_F(CloseGap, ARefusalChangesNothingButStatusAndEvent) {
    world.startAsOwner({{"A", 0.5, 1}});
    const auto file = world.filePanel.choice;
    const auto before = world.files();

    world->closeGap("no such criterion");
    EXPECT_TRUE(happened(world, {}));

    world.filePanel.choice = std::nullopt;
    world->closeGap("A");
    EXPECT_TRUE(happened(world, {"panel Attach evidence",
                                 "status Evidence required to close A — no artifact selected.",
                                 R"(event {"criterion":"A","kind":"close_gap_no_evidence"})"}));
    world.filePanel.choice = world.outputs();
    world->closeGap("A");
    EXPECT_TRUE(
        happened(world, {"panel Attach evidence",
                         "status Evidence required to close A — could not read artifact.",
                         R"(event {"criterion":"A","kind":"close_gap_evidence_unreadable"})"}));
    world.filePanel.choice = file;
    world.authentication.answer = false;
    world->closeGap("A");
    EXPECT_TRUE(happened(
        world,
        {"panel Attach evidence", "presence Close A — verify to mark this criterion met",
         "status Not verified — A unchanged. HIPR:TouchID:DENIED",
         R"(event {"criterion":"A","kind":"close_gap_denied","record":"HIPR:TouchID:DENIED"})"}));
    EXPECT_EQ(*world->readiness, 0.5);
    EXPECT_EQ(world->totems->size(), 1U);
    EXPECT_EQ(world.files(), before);
}

TEST_F(CloseGap, AMetCriterionIsSealedAgainAndAHighGateComesDownToOne) {
    world.startAsOwner({{"A", 1.5, 1}, {"B", 0, 1}, {"B", 0, 2}});
    world->closeGap("A");
    EXPECT_EQ(world.record(1).at("gate_before"), 1.5);
    EXPECT_EQ(*world->status, "Closed A: readiness 37.5%→25.0%.");
    world->closeGap("B");
    EXPECT_EQ(*world->readiness, 0.5) << "of repeated ids the first is closed";
}

TEST_F(CloseGap, AnUnverifiedPersonsSealSaysSo) {
    world.writeMesh({{"A"}});
    world.start();
    world->closeGap("A");
    EXPECT_EQ(world.record(0).at("owner"), "unverified");
    EXPECT_EQ(world->citations->front().source, "owner unverified · presence HIPR:TouchID:present");
}

TEST_F(CloseGap, ReadinessAfterARestartIsReadinessBeforeIt) {
    std::vector<World::Criterion> criteria;
    criteria.reserve(13);
    for (int i = 0; i < 13; ++i) {
        criteria.push_back({"CC" + std::to_string(i), i % 3 * 0.3, i % 5 + 1, "e GAP: g"});
    }
    world.startAsOwner(criteria);
    for (const int i : {3, 0, 12, 7})
        world->closeGap("CC" + std::to_string(i));
    const double readiness = *world->readiness;
    const SOC2Mesh mesh = **world->mesh;
    world.start();
    EXPECT_EQ(*world->readiness, readiness);
    EXPECT_EQ((*world->mesh)->nodes, mesh.nodes);
    EXPECT_TRUE(world->totems->empty()) << "the chain begins anew with each run";
    const auto citations = *world->citations;
    EXPECT_THAT(citations[0].claim, StartsWith("Replayed 4 sealed gap-closes → readiness "));
}

TEST_F(CloseGap, ALargeFileIsHashedInPiecesWithProgressShown) {
    world.startAsOwner({{"A"}});
    const auto file = world.write("big.bin", "");
    std::filesystem::resize_file(file, std::uintmax_t{80} << 20);
    world.filePanel.choice = file;
    bool ticked = false;
    world->play();
    world.eventLoop.duringPass = [&] { ticked = ticked || (world.ticker.fire(), *world->t > 0); };
    world.transcript();
    world->closeGap("A");
    EXPECT_EQ(world.eventLoop.passes, 5);
    EXPECT_FALSE(ticked) << "no tick comes between the choice and the seal";
    const auto lines = world.transcript();
    EXPECT_EQ(lines[1], "progress Reading big.bin 20.0%");
    EXPECT_EQ(lines[6], "progress none");
    EXPECT_EQ(world.record(1).at("evidence_root"),
              sha256Hex(std::string(std::size_t{80} << 20, '\0')));
}

class Run : public CloseGap {};

TEST_F(Run, DispatchesEachAct) {
    world.writeRoles({{{"role", "Engineer"}, {"readonly", false}}});
    world.writeMesh({{"A"}});
    world.start();
    world->run({Act::Kind::play});
    EXPECT_TRUE(*world->running);
    world->run({Act::Kind::pause});
    EXPECT_FALSE(*world->running);
    world->run({Act::Kind::bond});
    EXPECT_EQ(world->totems->size(), 1U);
    world->run({Act::Kind::throttle});
    EXPECT_EQ(*world->drive, 0.5);
    world->run({Act::Kind::kyc});
    EXPECT_EQ(world->role->value(), "Engineer") << "the first role of the map";
    world->verifyKYC("Owner");
    world->run({Act::Kind::kyc});
    EXPECT_EQ(world->role->value(), "Owner") << "the role that is set";
    world->run({Act::Kind::snapshot});
    EXPECT_EQ(world.eventKinds().back(), "os_snapshot");
    world->run({Act::Kind::closeGap, "A"});
    EXPECT_EQ(*world->readiness, 1.0);
    world->run({Act::Kind::generate, "A"});
    EXPECT_EQ(*world->status, "Writing policy for A on-device…");
    World bare;
    bare.start().run({Act::Kind::kyc});
    EXPECT_EQ(bare->role->value(), "Owner");
}

} // namespace
} // namespace kelvo::test
