#include <cmath>
#include <limits>

#include "EngineTest.h"

namespace kelvo::test {
namespace {

const std::string genesis(64, '0');

class RunLoop : public RunningEngineTest {};

TEST_F(RunLoop, TheStartUpModelPausesItselfAtTick44) {
    world->play();
    EXPECT_EQ(*world->status, "PLAY — unitary evolution (PENDING, reversible)");
    world->play();
    EXPECT_EQ(world.ticker.starts, 1) << "playing twice starts one timer";
    EXPECT_THAT(world.eventKinds(), Contains("play").Times(1));
    EXPECT_EQ(world.ticker.fire(1000), 44);
    EXPECT_FALSE(*world->running);
    EXPECT_TRUE(world->riskLatched());
    EXPECT_EQ(*world->status, "PAUSE — frozen.");
    ASSERT_TRUE(world->pending->has_value());
    EXPECT_EQ((*world->pending)->title, "collapse@t=0.440");
    EXPECT_EQ(world->citations->front().claim,
              "Risk crossed safe limit — auto-paused for human approval.");
    EXPECT_THAT(world->citations->front().source,
                MatchesRegex("dissipation rate 0\\.3. ≥ limit 0\\.30"));
    ASSERT_EQ(world.notifications.posted.size(), 1U);
    EXPECT_EQ(world.notifications.posted[0].title, "⚠ Risk needs your review");
    EXPECT_EQ(world.notifications.posted[0].body,
              "System auto-paused. Press BOND (Touch ID) to approve, or PLAY to continue.");

    world->play();
    EXPECT_FALSE(world->riskLatched());
    EXPECT_EQ(world.ticker.fire(10), 1) << "the rate is still above the limit";
    EXPECT_EQ(world.notifications.posted.size(), 2U);
    EXPECT_EQ((*world->pending)->title, "collapse@t=0.450") << "a later measurement replaces it";
}

TEST_F(RunLoop, PauseStagesTheStateAlsoWhenIdle) {
    world->pause();
    const PendingMeasurement staged = **world->pending;
    EXPECT_EQ(staged.title, "collapse@t=0.000");
    EXPECT_EQ(staged.payload, R"({"risk":0,"state":[0,0],"t":0,"tip":")" + genesis +
                                  R"(","title":"collapse@t=0.000"})");
    EXPECT_EQ(staged.snapshot, (std::vector<double>{0, 0}));
    EXPECT_EQ(world.events().back(), (Json{{"kind", "pause"}, {"t", 0.0}, {"risk", 0.0}}));
}

TEST_F(RunLoop, ATickThatWasUnderWayWhenTheLoopStoppedIsDropped) {
    world->play();
    const auto straggler = world.ticker.straggler();
    world->pause();
    world.transcript();
    straggler();
    EXPECT_EQ(*world->t, 0);
    EXPECT_TRUE(happened(world, {}));
    world.stop();
    straggler(); // the engine is gone
}

TEST_F(RunLoop, ThrottlingHalvesWhatTheNextStepReads) {
    world->throttle();
    EXPECT_TRUE(
        happened(world, {"drive 0.500",
                         "cite Agent throttled source Se → 0.50 | lever: reduce ∫R·f² growth rate",
                         R"(event {"drive":0.5,"kind":"throttle"})", "cards *"}));
    world->throttle();
    world->throttle();
    EXPECT_EQ(*world->drive, 0.125);
    world->play();
    world.ticker.fire();
    World full;
    full.start().play();
    full.ticker.fire();
    EXPECT_NEAR(world->sim()->state()[0], full.engine().sim()->state()[0] / 8, 1e-15);
}

TEST_F(RunLoop, AStateWithoutAJsonFormIsStagedWithoutBytes) {
    world->load({.nodes = {{"s", "Se"}, {"J", "j1"}, {"i", "I", 0.0}, {"r", "R", 1.0}},
                 .bonds = {{"s", "J"}, {"J", "i"}, {"J", "r"}}});
    world->play();
    world.ticker.fire(3);
    ASSERT_FALSE(std::isfinite(world->sim()->state()[0]));
    world->pause();
    ASSERT_TRUE(world->pending->has_value());
    EXPECT_EQ((*world->pending)->payload, "");
    EXPECT_NE(world.eventKinds().back(), "pause") << "an event that JSON cannot hold is dropped";
    world->bondCollapse();
    EXPECT_EQ(world.record(0).at("title"), (*world->totems)[0].title);
    EXPECT_EQ(world.record(0).at("sourceDb"), "collapse");
}

} // namespace
} // namespace kelvo::test
