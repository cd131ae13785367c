#include "base/Sha256.h"
#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

TEST(Bond, WithNothingStagedDoesNothing) {
    test::World world;
    EngineVM& vm = world.start();
    vm.bondCollapse();
    EXPECT_THAT(world.transcript(), ElementsAre());
}

TEST(Bond, ADenialKeepsTheMeasurementStaged) {
    test::World world;
    EngineVM& vm = world.start();
    vm.pause();
    world.transcript();
    world.authentication.answer = false;
    vm.bondCollapse();
    EXPECT_THAT(world.transcript(),
                ElementsAre("status HIPR — awaiting Touch ID…",
                            R"(event {"kind":"hipr_request","title":"collapse@t=0.000"})",
                            "presence BOND — collapse PENDING→FINAL, seal totem to chain",
                            "status HIPR DENIED — no chain write. HIPR:TouchID:DENIED",
                            R"(event {"kind":"hipr_denied","record":"HIPR:TouchID:DENIED"})"));
    world.authentication.unavailable = "";
    vm.bondCollapse();
    EXPECT_EQ(*vm.status, "HIPR DENIED — no chain write. HIPR-UNAVAILABLE: no policy");
    EXPECT_TRUE(vm.pending->has_value());
    EXPECT_TRUE(vm.chain().blocks().empty());
    EXPECT_TRUE(world.files().empty());
}

TEST(Bond, AnApprovalSealsInTheFixedOrder) {
    test::World world;
    EngineVM& vm = world.start();
    vm.play();
    world.ticker.fire(44);
    const std::string payload = (*vm.pending)->payload;
    world.transcript();
    vm.bondCollapse();
    const Totem& totem = (*vm.totems)[0];
    const std::string block = totem.blockHash.substr(0, 12);
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "status HIPR — awaiting Touch ID…",
            R"(event {"kind":"hipr_request","title":"collapse@t=0.440"})",
            "presence BOND — collapse PENDING→FINAL, seal totem to chain", "totems 1",
            "pending none", "file collapse-0-" + block + ".totem.json",
            "status FINAL — totem " + block + " idx 0. verify=true. → outputs (bouncer will seal)",
            "cite measurement collapsed → FINAL | HIPR HIPR:TouchID:present · block " + block,
            R"(event {"blockHash":")" + totem.blockHash +
                R"(","index":0,"kind":"final","record":"HIPR:TouchID:present","verify":true})",
            "cite Checkpointed system state: 0 families | 1 approval · totem " + block,
            R"(event {"approvals":1,"block":")" + totem.blockHash + R"(","kind":"checkpoint"})",
            StartsWith("cards ")));
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
    EXPECT_TRUE(vm.riskLatched()) << "sealing does not resume the loop";
}

TEST(Bond, ChainsOneSealToTheNextAndPublishesNewestFirst) {
    test::World world;
    EngineVM& vm = world.start();
    for (int i = 0; i < 3; ++i) {
        vm.pause();
        vm.bondCollapse();
    }
    ASSERT_EQ(vm.totems->size(), 3U);
    EXPECT_EQ(vm.totems->front().index, 2);
    EXPECT_EQ(Json::parse(world.record(2).dump()).at("tip"), (*vm.totems)[1].blockHash);
    EXPECT_TRUE(vm.chain().verify());
}

TEST(Bond, AnUnwritableRecordKeepsTheTotem) {
    test::World world;
    EngineVM& vm = world.start();
    vm.pause();
    std::filesystem::remove_all(world.outputs());
    vm.bondCollapse();
    EXPECT_THAT(*vm.status, MatchesRegex("FINAL — totem [0-9a-f]{12} idx 0\\. verify=true\\. "
                                         "outputs: .*No such file or directory"));
    EXPECT_EQ(vm.totems->size(), 1U);
    EXPECT_FALSE(vm.pending->has_value());
    EXPECT_THAT(world.eventKinds(), ::testing::Contains("final"));
}

} // namespace
} // namespace kelvo
