#include "engine/WorkQueue.h"

#include "EngineTest.h"

namespace kelvo::test {
namespace {

TEST(WorkQueue, HoldsWorkAndRunsItInOrderOfArrival) {
    WorkQueue queue;
    std::vector<int> ran;
    queue.submit([&] { ran.push_back(1); });
    {
        const WorkQueue::Exclusive outer(queue);
        queue.submit([&] {
            {
                const WorkQueue::Exclusive inner(queue);
                queue.submit([&] { ran.push_back(4); });
            }
            ran.push_back(2); // what comes behind waits for the end of this
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
class Exclusive : public EngineTest {};

TEST_F(Exclusive, NothingRunsBetweenAPromptAndItsSeal) {
    world.startAsOwner({{"A", 0, 1}, {"B", 0, 1}});
    world.filePanel.choice = world.write("e.txt", "e");
    world->askAssistant("q");
    world.eventLoop.drain();
    world->play();
    world.transcript();

    int asked = 0;
    world.authentication.whileAsking = [&] {
        if (++asked > 1) return;
        world.ticker.fire(5);
        world.model.answer(R"({"answer":"late","action":"play"})");
        world->pause();
        world->throttle();
        world->siriSay("voice");
        world->adopt(world->templates()[0]);
        world->bondCollapse();
        world->closeGap("B");
        world->snapshotOS();
        EXPECT_EQ(*world->t, 0);
    };
    world->closeGap("A");
    const auto lines = world.transcript();
    const std::vector<std::string> seal(lines.begin(), lines.begin() + 9);
    EXPECT_THAT(seal,
                ElementsAre("panel Attach evidence",
                            "presence Close A — verify to mark this criterion met", "mesh 1 met",
                            "readiness 50.0%", "totems 2", StartsWith("file control-1-"),
                            "status Closed A: readiness 0.0%→50.0%.", StartsWith("cite Closed A"),
                            StartsWith("event {\"block\"")));
    const std::vector<std::string> signs = {
        "reply late",     "status PAUSE", "cite Agent throttled", "reply voice",
        "status System:", "pending none", "status Closed B",      "facts 5"};
    std::vector<std::string> afterwards;
    for (const std::string& line : lines) {
        for (const std::string& sign : signs) {
            if (line.starts_with(sign)) afterwards.push_back(sign);
        }
    }
    EXPECT_EQ(afterwards, signs);
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(*world->t, 0) << "ticks are dropped, not kept";
}

TEST_F(Exclusive, ASecondUploadWaitsForTheFirstPanel) {
    world.startAsOwner({{"A"}});
    bool again = true;
    world.filePanel.whileAsking = [&] {
        if (!std::exchange(again, false)) return;
        world->addEvidence();
        EXPECT_EQ(world.filePanel.requests.size(), 1U);
    };
    world->addEvidence();
    EXPECT_EQ(world.filePanel.requests.size(), 2U);
}

} // namespace
} // namespace kelvo::test
