#include "base/Sha256.h"

#include "EngineTest.h"

namespace kelvo::test {
namespace {

class Bond : public RunningEngineTest {};

TEST_F(Bond, ADenialKeepsTheMeasurementStagedAndWithNothingStagedNothingHappens) {
    world->bondCollapse();
    EXPECT_TRUE(happened(world, {}));
    world->pause();
    world.transcript();
    world.authentication.answer = false;
    world->bondCollapse();
    EXPECT_TRUE(
        happened(world, {"status HIPR — awaiting Touch ID…",
                         R"(event {"kind":"hipr_request","title":"collapse@t=0.000"})",
                         "presence BOND — collapse PENDING→FINAL, seal totem to chain",
                         "status HIPR DENIED — no chain write. HIPR:TouchID:DENIED",
                         R"(event {"kind":"hipr_denied","record":"HIPR:TouchID:DENIED"})"}));
    world.authentication.unavailable = "";
    world->bondCollapse();
    EXPECT_EQ(*world->status, "HIPR DENIED — no chain write. HIPR-UNAVAILABLE: no policy");
    EXPECT_TRUE(world->pending->has_value());
    EXPECT_TRUE(world->chain().blocks().empty());
    EXPECT_TRUE(world.files().empty());
}

TEST_F(Bond, AnApprovalSealsInTheFixedOrder) {
    world->play();
    world.ticker.fire(44);
    const std::string payload = (*world->pending)->payload;
    world.transcript();
    world->bondCollapse();
    const Totem& totem = (*world->totems)[0];
    EXPECT_TRUE(happened(
        world,
        {"status HIPR — awaiting Touch ID…",
         R"(event {"kind":"hipr_request","title":"collapse@t=0.440"})",
         "presence BOND — collapse PENDING→FINAL, seal totem to chain", "totems 1", "pending none",
         "file collapse-0-#0...totem.json",
         "status FINAL — totem #0.. idx 0. verify=true. → outputs (bouncer will seal)",
         "cite measurement collapsed → FINAL | HIPR HIPR:TouchID:present · block #0..",
         R"(event {"blockHash":"#0","index":0,"kind":"final","record":"HIPR:TouchID:present","verify":true})",
         "cite Checkpointed system state: 0 families | 1 approval · totem #0..",
         R"(event {"approvals":1,"block":"#0","kind":"checkpoint"})", "cards *"}));
    EXPECT_EQ(totem.payloadRoot, sha256Hex(payload));
    EXPECT_EQ(totem.firedBy, "HIPR:TouchID:present");

    Json expected = Json::parse(payload);
    expected.update({{"sourceDb", "collapse"},
                     {"asOf", "2026-01-31T09:15:02Z"},
                     {"firedBy", "HIPR:TouchID:present"},
                     {"appBlockHash", totem.blockHash},
                     {"appIndex", 0},
                     {"payloadRoot", totem.payloadRoot},
                     {"appPrev", std::string(64, '0')}});
    EXPECT_EQ(world.record(0), expected);
    EXPECT_TRUE(world->riskLatched()) << "sealing does not resume the loop";
}

TEST_F(Bond, ChainsOneSealToTheNextAndPublishesNewestFirst) {
    for (int i = 0; i < 3; ++i) {
        world->pause();
        world->bondCollapse();
    }
    ASSERT_EQ(world->totems->size(), 3U);
    EXPECT_EQ(world->totems->front().index, 2);
    EXPECT_EQ(Json::parse(world.record(2).dump()).at("tip"), (*world->totems)[1].blockHash);
    EXPECT_TRUE(world->chain().verify());
}

TEST_F(Bond, AnUnwritableRecordKeepsTheTotem) {
    world->pause();
    std::filesystem::remove_all(world.outputs());
    world->bondCollapse();
    EXPECT_THAT(*world->status, MatchesRegex("FINAL — totem [0-9a-f]{12} idx 0\\. verify=true\\. "
                                             "outputs: .*No such file or directory"));
    EXPECT_EQ(world->totems->size(), 1U);
    EXPECT_FALSE(world->pending->has_value());
    EXPECT_THAT(world.eventKinds(), Contains("final"));
}

} // namespace
} // namespace kelvo::test
