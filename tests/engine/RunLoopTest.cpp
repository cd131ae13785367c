#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kelvo {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

const std::string genesis(64, '0');

TEST(RunLoop, PlayingTwiceStartsOneTimer) {
    test::World world;
    EngineVM& vm = world.start();
    vm.play();
    EXPECT_EQ(*vm.status, "PLAY — unitary evolution (PENDING, reversible)");
    vm.play();
    EXPECT_EQ(world.ticker.starts, 1);
    EXPECT_THAT(world.eventKinds(), Contains("play").Times(1));
}

TEST(RunLoop, TheStartUpModelPausesItselfAtTick44) {
    test::World world;
    EngineVM& vm = world.start();
    vm.play();
    EXPECT_EQ(world.ticker.fire(1000), 44);
    EXPECT_FALSE(*vm.running);
    EXPECT_TRUE(vm.riskLatched());
    EXPECT_EQ(*vm.status, "PAUSE — frozen.");
    ASSERT_TRUE(vm.pending->has_value());
    EXPECT_EQ((*vm.pending)->title, "collapse@t=0.440");
    EXPECT_EQ(vm.citations->front().claim,
              "Risk crossed safe limit — auto-paused for human approval.");
    EXPECT_THAT(vm.citations->front().source,
                ::testing::MatchesRegex("dissipation rate 0\\.3. ≥ limit 0\\.30"));
    ASSERT_EQ(world.notifications.posted.size(), 1U);
    EXPECT_EQ(world.notifications.posted[0].title, "⚠ Risk needs your review");
    EXPECT_EQ(world.notifications.posted[0].body,
              "System auto-paused. Press BOND (Touch ID) to approve, or PLAY to continue.");

    vm.play();
    EXPECT_FALSE(vm.riskLatched());
    EXPECT_EQ(world.ticker.fire(10), 1) << "the rate is still above the limit";
    EXPECT_EQ(world.notifications.posted.size(), 2U);
    EXPECT_EQ((*vm.pending)->title, "collapse@t=0.450") << "a later measurement replaces it";
}

TEST(RunLoop, PauseStagesTheStateAlsoWhenIdle) {
    test::World world;
    EngineVM& vm = world.start();
    vm.pause();
    const PendingMeasurement staged = **vm.pending;
    EXPECT_EQ(staged.title, "collapse@t=0.000");
    EXPECT_EQ(staged.payload, R"({"risk":0,"state":[0,0],"t":0,"tip":")" + genesis +
                                  R"(","title":"collapse@t=0.000"})");
    EXPECT_EQ(staged.snapshot, (std::vector<double>{0, 0}));
    EXPECT_EQ(world.events().back(), (Json{{"kind", "pause"}, {"t", 0.0}, {"risk", 0.0}}));
}

TEST(RunLoop, ATickThatWasUnderWayWhenTheLoopStoppedIsDropped) {
    test::World world;
    EngineVM& vm = world.start();
    vm.play();
    const auto straggler = world.ticker.straggler();
    vm.pause();
    world.transcript();
    straggler();
    EXPECT_EQ(*vm.t, 0);
    EXPECT_THAT(world.transcript(), ElementsAre());
    world.stop();
    straggler(); // the engine is gone
}

TEST(RunLoop, ThrottlingHalvesWhatTheNextStepReads) {
    test::World world;
    EngineVM& vm = world.start();
    world.transcript();
    vm.throttle();
    EXPECT_THAT(
        world.transcript(),
        ElementsAre("drive 0.500",
                    "cite Agent throttled source Se → 0.50 | lever: reduce ∫R·f² growth rate",
                    R"(event {"drive":0.5,"kind":"throttle"})", ::testing::StartsWith("cards ")));
    vm.throttle();
    vm.throttle();
    EXPECT_EQ(*vm.drive, 0.125);
    vm.play();
    world.ticker.fire();
    test::World full;
    full.start().play();
    full.ticker.fire();
    EXPECT_NEAR(vm.sim()->state()[0], full.engine().sim()->state()[0] / 8, 1e-15);
}

TEST(RunLoop, AStateWithoutAJsonFormIsStagedWithoutBytes) {
    test::World world;
    EngineVM& vm = world.start();
    vm.load({.nodes = {{"s", "Se"}, {"J", "j1"}, {"i", "I", 0.0}, {"r", "R", 1.0}},
             .bonds = {{"s", "J"}, {"J", "i"}, {"J", "r"}}});
    vm.play();
    world.ticker.fire(3);
    ASSERT_FALSE(std::isfinite(vm.sim()->state()[0]));
    vm.pause();
    ASSERT_TRUE(vm.pending->has_value());
    EXPECT_EQ((*vm.pending)->payload, "");
    EXPECT_NE(world.eventKinds().back(), "pause") << "an event that JSON cannot hold is dropped";
    vm.bondCollapse();
    EXPECT_EQ(world.record(0).at("title"), (*vm.totems)[0].title);
    EXPECT_EQ(world.record(0).at("sourceDb"), "collapse");
}

} // namespace
} // namespace kelvo
