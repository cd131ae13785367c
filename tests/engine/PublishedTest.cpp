#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;

TEST(Published, AnnouncesBeforeTheStoreAndAfterIt) {
    test::World world;
    EngineVM& vm = world.start();
    std::vector<std::string> heard;
    auto subscription = vm.reply.observe([&] { heard.push_back("will: " + *vm.reply); },
                                         [&] { heard.push_back("did: " + *vm.reply); });
    vm.siriSay("one");
    vm.siriSay("one");
    EXPECT_THAT(heard, ElementsAre("will: ", "did: one", "will: one", "did: one"));
    subscription = Subscription();
    vm.siriSay("two");
    EXPECT_EQ(heard.size(), 4U) << "a subscription that was let go hears nothing";
}

TEST(Published, ObserversMayComeAndGoWhileTheyAreTold) {
    test::World world;
    EngineVM& vm = world.start();
    int first = 0;
    int late = 0;
    std::vector<Subscription> lateOnes;
    Subscription doomed = vm.reply.observe([] { FAIL() << "let go before its turn"; }, nullptr);
    Subscription leaver;
    const Subscription opener = vm.status.observe(nullptr, nullptr);
    Subscription stays = vm.reply.observe(
        [&] {
            ++first;
            leaver = Subscription();
            for (int i = 0; i < 100; ++i) {
                lateOnes.push_back(vm.reply.observe([&] { ++late; }, nullptr));
            }
        },
        nullptr);
    leaver = vm.reply.observe([] { FAIL() << "let go by an earlier observer"; }, nullptr);
    doomed = Subscription();
    vm.siriSay("x");
    EXPECT_EQ(first, 1);
    EXPECT_EQ(late, 0) << "one attached during an announcement hears the next";
    vm.siriSay("y");
    EXPECT_EQ(late, 100);
}

TEST(Published, RowsAreAViewOfTheListAsItWas) {
    test::World world;
    EngineVM& vm = world.start();
    vm.throttle();
    const EngineVM::Citations before = *vm.citations;
    vm.throttle();
    ASSERT_EQ(vm.citations->size(), before.size() + 1);
    EXPECT_EQ(vm.citations->front().claim, "Agent throttled source Se → 0.25");
    EXPECT_EQ(before.front().claim, "Agent throttled source Se → 0.50");
    EXPECT_EQ(std::vector<Citation>(before.begin(), before.end()).size(), before.size());
    EXPECT_EQ(before.back(), vm.citations->back());
}

} // namespace
} // namespace kelvo
