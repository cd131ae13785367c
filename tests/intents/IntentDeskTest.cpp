#include "intents/IntentDesk.h"

#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

class IntentDeskTest : public testing::Test {
protected:
    IntentDone count() {
        return [this](const auto&) { ++done; };
    }

    test::World world;
    EngineVM& vm = world.start();
    IntentDesk desk;
    int done = 0;
};

TEST_F(IntentDeskTest, WhatComesBeforeTheEngineRunsInOrderOnceItIsThere) {
    EXPECT_TRUE(desk.submit(AdoptFamilyIntent{CCFamily::cc6}, count()));
    EXPECT_TRUE(desk.submit(AdoptFamilyIntent{CCFamily::cc1}, count()));
    EXPECT_EQ(done, 0);
    desk.open({vm, world.model});
    EXPECT_EQ(done, 2);
    EXPECT_EQ(vm.currentTemplate->value(), "CC1");
}

TEST_F(IntentDeskTest, AskingTwiceForApprovalAsksThePersonOnce) {
    desk.open({vm, world.model});
    vm.pause();
    world.authentication.answer = false;
    world.authentication.whileAsking = [this] {
        for (int i = 0; i < 5; ++i)
            EXPECT_TRUE(desk.submit(SealKelvoIntent{}, count()));
        EXPECT_EQ(done, 0);
    };
    desk.submit(SealKelvoIntent{}, count());
    EXPECT_EQ(done, 6);
    EXPECT_EQ(world.authentication.reasons.size(), 1U) << "a refusal would be asked again";

    world.authentication.whileAsking = nullptr;
    desk.submit(SealKelvoIntent{}, count());
    EXPECT_EQ(world.authentication.reasons.size(), 2U) << "a later approval is a new one";
}

TEST_F(IntentDeskTest, ApprovalsThatWaitBehindAnotherPromptAreOneToo) {
    desk.open({vm, world.model});
    world.authentication.answer = false;
    vm.pause();
    bool first = true;
    world.authentication.whileAsking = [&] {
        if (!std::exchange(first, false)) return;
        for (int i = 0; i < 5; ++i)
            desk.submit(SealKelvoIntent{}, count());
    };
    vm.bondCollapse();
    EXPECT_EQ(done, 5);
    EXPECT_EQ(world.authentication.reasons.size(), 2U);
}

TEST_F(IntentDeskTest, TakesOnlySoMuchAtATimeAndMoreWhenThatIsDone) {
    desk.open({vm, world.model});
    for (std::size_t i = 0; i < IntentDesk::mostQuestions; ++i)
        EXPECT_TRUE(desk.submit(AskKelvoAgentIntent{"q"}, count()));
    EXPECT_FALSE(desk.submit(AskKelvoAgentIntent{"q"}, count()));
    EXPECT_TRUE(desk.submit(PlayKelvoIntent{}, count())) << "questions leave room for the others";
    world.model.fail("why");
    EXPECT_TRUE(desk.submit(AskKelvoAgentIntent{"q"}, count()));
    EXPECT_EQ(world.model.requests.size(), IntentDesk::mostQuestions + 1);

    vm.pause();
    std::size_t taken = 0;
    world.authentication.whileAsking = [&] {
        while (desk.submit(PlayKelvoIntent{}, count()))
            ++taken;
    };
    vm.bondCollapse();
    EXPECT_EQ(taken, IntentDesk::mostIntents - IntentDesk::mostQuestions);
    EXPECT_TRUE(desk.submit(PlayKelvoIntent{}, count()));
}

} // namespace
} // namespace kelvo
