#include "engine/WorkQueue.h"
#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;

TEST(WorkQueue, HoldsWorkAndRunsItInOrderOfArrival) {
    WorkQueue queue;
    std::vector<int> ran;
    queue.submit([&] { ran.push_back(1); });
    {
        const WorkQueue::Exclusive outer(queue);
        queue.submit([&] {
            const WorkQueue::Exclusive inner(queue);
            ran.push_back(2);
            queue.submit([&] { ran.push_back(4); });
        });
        {
            const WorkQueue::Exclusive nested(queue);
            queue.submit([&] { ran.push_back(3); });
        }
        EXPECT_THAT(ran, ElementsAre(1)) << "holding nests";
        EXPECT_TRUE(queue.held());
    }
    EXPECT_THAT(ran, ElementsAre(1, 2, 3, 4));
    EXPECT_FALSE(queue.held());
}

/// Everything that can reach the engine while a prompt is open: ticks, a model's answer, and every
/// operation that a voice request or a second click could call.
TEST(Exclusive, NothingRunsBetweenAPromptAndItsSeal) {
    test::World world;
    EngineVM& vm = world.startAsOwner({{"A", 0, 1}, {"B", 0, 1}});
    world.filePanel.choice = world.write("e.txt", "e");
    vm.askAssistant("q");
    world.eventLoop.drain();
    vm.play();
    world.transcript();

    int asked = 0;
    world.authentication.whileAsking = [&] {
        if (++asked > 1) return;
        world.ticker.fire(5);
        world.model.answer(R"({"answer":"late","action":"play"})");
        vm.pause();
        vm.throttle();
        vm.siriSay("voice");
        vm.adopt(vm.templates()[0]);
        vm.bondCollapse();
        vm.closeGap("B");
        vm.snapshotOS();
        EXPECT_EQ(*vm.t, 0);
    };
    vm.closeGap("A");
    const auto lines = world.transcript();
    const std::vector<std::string> seal(lines.begin(), lines.begin() + 9);
    EXPECT_THAT(seal,
                ElementsAre("panel Attach evidence",
                            "presence Close A — verify to mark this criterion met", "mesh 1 met",
                            "readiness 50.0%", "totems 2", ::testing::StartsWith("file control-1-"),
                            "status Closed A: readiness 0.0%→50.0%.",
                            ::testing::StartsWith("cite Closed A"),
                            ::testing::StartsWith("event {\"block\"")));
    std::vector<std::string> afterwards;
    for (const std::string& line : lines) {
        for (const char* sign :
             {"reply late", "status PAUSE", "cite Agent throttled", "reply voice",
              "status System:", "pending none", "status Closed B", "facts 5"}) {
            if (line.starts_with(sign)) afterwards.emplace_back(sign);
        }
    }
    EXPECT_THAT(afterwards,
                ElementsAre("reply late", "status PAUSE", "cite Agent throttled", "reply voice",
                            "status System:", "pending none", "status Closed B", "facts 5"));
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(*vm.t, 0) << "ticks are dropped, not kept";
}

TEST(Exclusive, ASecondUploadWaitsForTheFirstPanel) {
    test::World world;
    EngineVM& vm = world.startAsOwner({{"A"}});
    bool again = true;
    world.filePanel.whileAsking = [&] {
        if (!std::exchange(again, false)) return;
        vm.addEvidence();
        EXPECT_EQ(world.filePanel.requests.size(), 1U);
    };
    vm.addEvidence();
    EXPECT_EQ(world.filePanel.requests.size(), 2U);
}

} // namespace
} // namespace kelvo
