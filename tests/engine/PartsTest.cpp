// What the scenes cannot tell of the engine's parts: who hears what and when, and borders that no
// run reaches.

#include "base/Files.h"
#include "base/Uuid.h"
#include "engine/NextBestAction.h"
#include "engine/WorkQueue.h"
#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace kelvo::test {
namespace {

using ::testing::ElementsAre;

TEST(Published, AnnouncesBeforeTheStoreAndAfterItUntilLetGo) {
    World world;
    world.start();
    std::vector<std::string> heard;
    auto subscription = world->reply.observe([&] { heard.push_back("will: " + *world->reply); },
                                             [&] { heard.push_back("did: " + *world->reply); });
    world->siriSay("one");
    world->siriSay("one");
    EXPECT_THAT(heard, ElementsAre("will: ", "did: one", "will: one", "did: one"));
    subscription = Subscription();
    world->siriSay("two");
    EXPECT_EQ(heard.size(), 4U);
}

TEST(Published, ObserversMayComeAndGoWhileTheyAreTold) {
    World world;
    world.start();
    int first = 0;
    int late = 0;
    std::vector<Subscription> lateOnes;
    Subscription doomed = world->reply.observe([] { FAIL() << "let go before its turn"; }, nullptr);
    Subscription leaver;
    const Subscription opener = world->reply.observe(
        [&] {
            ++first;
            leaver = Subscription();
            for (int i = 0; i < 100; ++i)
                lateOnes.push_back(world->reply.observe([&] { ++late; }, nullptr));
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

TEST(Published, RowsAreAViewOfTheListAsItWas) {
    World world;
    world.start().throttle();
    const EngineVM::Citations before = *world->citations;
    world->throttle();
    ASSERT_EQ(world->citations->size(), before.size() + 1);
    EXPECT_EQ(before.front().claim, "Agent throttled source Se → 0.50");
    EXPECT_EQ(std::vector<Citation>(before.begin(), before.end()).size(), before.size());
    EXPECT_EQ(before.back(), world->citations->back());
}

TEST(WorkQueue, HoldsWorkAndRunsItInOrderOfArrival) {
    WorkQueue queue;
    std::vector<int> ran;
    queue.submit([&] { ran.push_back(1); });
    EXPECT_TRUE(queue.runNow([&](const Turn& turn) {
        const WorkQueue::Exclusive outer(turn);
        queue.submit([&](const Turn& later) {
            {
                const WorkQueue::Exclusive inner(later);
                queue.submit([&] { ran.push_back(4); });
            }
            ran.push_back(2); // what comes behind waits for the end of this
        });
        {
            const WorkQueue::Exclusive nested(turn);
            queue.submit([&] { ran.push_back(3); });
        }
        EXPECT_FALSE(queue.runNow([&](const Turn&) { ran.push_back(0); }));
        EXPECT_THAT(ran, ElementsAre(1)) << "holding nests";
    }));
    EXPECT_THAT(ran, ElementsAre(1, 2, 3, 4));
}

TEST(RunLoop, ATickThatWasUnderWayWhenTheLoopStoppedIsDropped) {
    World world;
    world.start().play();
    const auto straggler = world.ticker.straggler();
    world->pause();
    world.transcript();
    straggler();
    EXPECT_EQ(*world->t, 0);
    EXPECT_THAT(world.transcript(), ElementsAre());
    world.stop();
    straggler(); // the engine is gone
}

TEST(Chat, EachLineOfTheHistoryHasAnIdentityOfItsOwn) {
    World world;
    world.start().askAssistant("a/b \"é\"");
    const Json file = Json::parse(*readFile(world.project() / "chat-history.json"));
    const std::string id = world->chat->front().id;
    EXPECT_TRUE(isUuid(id));
    EXPECT_EQ(file, Json::array({{{"id", id},
                                  {"role", "you"},
                                  {"text", "a/b \"é\""},
                                  {"ts", "2026-01-31T09:15:02Z"}}}));
}

TEST(Cards, AtTheirBorders) {
    const std::pair<SimulationInputs, const char*> table[] = {
        {{.pending = true, .firstState = 0, .rate = 9, .drive = 1}, "Approve & seal"},
        {{.firstState = -0.01, .rate = 9, .drive = 1}, "Approve & seal steady state"},
        {{.firstState = -0.011, .rate = 0.2999, .drive = 1}, "Monitor"},
        {{.firstState = 0, .rate = 9, .drive = 0}, "Monitor"},
        {{.firstState = 0.011, .rate = 0.3, .drive = 0.125}, "Reduce risk?"},
        {{.firstState = std::nan(""), .rate = std::nan(""), .drive = 1}, "Monitor"},
    };
    for (const auto& [inputs, title] : table)
        EXPECT_EQ(simulationCards(inputs).human.title, title) << inputs.firstState;
    EXPECT_EQ(chooseCards({.verified = false, .tasks = RoleInputs{}}).human.title,
              "Verify your identity");
}

TEST(AssistantActions, OnlyTheKnownTokensProposeAnythingAndEachHasAName) {
    const SOC2Mesh mesh{{{"CC6-access", 0.4, 1, ""}, {"CC7-logs", 1, 1, ""}, {"ÄB", 0, 1, ""}}};
    const std::pair<const char*, const char*> table[] = {
        {"play", "Play"},
        {"pause", "Pause"},
        {"snapshot_os", "Check this device"},
        {"generate: cc6-access ", "Generate CC6-access policy"},
        {"generate:äb", "Generate ÄB policy"},
    };
    for (const auto& [token, name] : table)
        EXPECT_EQ(actionName(proposedStep(token, &mesh).action.value()), name) << token;
    EXPECT_EQ(proposedStep("add_evidence", &mesh), (ProposedStep{std::nullopt, true}));
    for (const char* token : {"generate:cc7-logs", "generate:cc6", "generate:", "readiness", "none",
                              "bond", "kyc", "play now", "close:cc6-access", ""})
        EXPECT_EQ(proposedStep(token, &mesh), ProposedStep{}) << token;
    EXPECT_EQ(proposedStep("generate:cc6-access", nullptr), ProposedStep{});
}

} // namespace
} // namespace kelvo::test
