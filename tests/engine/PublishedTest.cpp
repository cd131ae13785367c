#include "EngineTest.h"

namespace kelvo::test {
namespace {

class Published : public RunningEngineTest {};

TEST_F(Published, AnnouncesBeforeTheStoreAndAfterIt) {
    std::vector<std::string> heard;
    auto subscription = world->reply.observe([&] { heard.push_back("will: " + *world->reply); },
                                             [&] { heard.push_back("did: " + *world->reply); });
    world->siriSay("one");
    world->siriSay("one");
    EXPECT_THAT(heard, ElementsAre("will: ", "did: one", "will: one", "did: one"));
    subscription = Subscription();
    world->siriSay("two");
    EXPECT_EQ(heard.size(), 4U) << "a subscription that was let go hears nothing";
}

TEST_F(Published, ObserversMayComeAndGoWhileTheyAreTold) {
    int first = 0;
    int late = 0;
    std::vector<Subscription> lateOnes;
    Subscription doomed = world->reply.observe([] { FAIL() << "let go before its turn"; }, nullptr);
    Subscription leaver;
    const Subscription opener = world->status.observe(nullptr, nullptr);
    Subscription stays = world->reply.observe(
        [&] {
            ++first;
            leaver = Subscription();
            for (int i = 0; i < 100; ++i) {
                lateOnes.push_back(world->reply.observe([&] { ++late; }, nullptr));
            }
        },
        nullptr);
    leaver = world->reply.observe([] { FAIL() << "let go by an earlier observer"; }, nullptr);
    doomed = Subscription();
    world->siriSay("x");
    EXPECT_EQ(first, 1);
    EXPECT_EQ(late, 0) << "one attached during an announcement hears the next";
    world->siriSay("y");
    EXPECT_EQ(late, 100);
}

TEST_F(Published, RowsAreAViewOfTheListAsItWas) {
    world->throttle();
    const EngineVM::Citations before = *world->citations;
    world->throttle();
    ASSERT_EQ(world->citations->size(), before.size() + 1);
    EXPECT_EQ(world->citations->front().claim, "Agent throttled source Se → 0.25");
    EXPECT_EQ(before.front().claim, "Agent throttled source Se → 0.50");
    EXPECT_EQ(std::vector<Citation>(before.begin(), before.end()).size(), before.size());
    EXPECT_EQ(before.back(), world->citations->back());
}

} // namespace
} // namespace kelvo::test
