#include "base/Files.h"
#include "base/Uuid.h"

#include "EngineTest.h"

namespace kelvo::test {
namespace {

const std::string unavailable =
    "On-device assistant unavailable right now — use the buttons on the right.";

std::string answer(const std::string& text, const std::string& action) {
    return Json{{"answer", text}, {"action", action}}.dump();
}

class Chat : public EngineTest {
protected:
    void start() {
        world.startAsOwner({{"CC6-access", 0.4, 1, "x GAP: no review "}, {"CC7-logs", 1, 1}});
    }
    void ask(const std::string& question, const std::string& text, const std::string& action) {
        world->askAssistant(question);
        world.eventLoop.drain();
        world.model.answer(answer(text, action));
    }
};

TEST_F(Chat, AQuestionIsAnsweredFromTheLiveState) {
    start();
    world->askAssistant(" \n what next?\u2003");
    world.eventLoop.drain();
    EXPECT_EQ(
        world.model.requests.at(0).prompt,
        "Current state:\nOwner: Ada Byron\nReadiness: 70.0% (1/13 criteria met)\n"
        "Open gaps (criterion id — what's needed):\n- CC6-access: no review\n\nUser: what next?");
    EXPECT_TRUE(*world->assistantBusy);
    world.model.answer(answer("Close the gap.", " Generate: cc6-ACCESS \n"));
    EXPECT_TRUE(happened(
        world,
        {"busy true", "proposed none", "chat you: what next?", "reply Close the gap.",
         "chat pellum: Close the gap.", "proposed Generate CC6-access policy",
         R"(event {"action":"generate: cc6-access","chars":10,"kind":"assistant_ask","proposed":true})",
         "busy false"}));
    EXPECT_EQ(**world->proposedAction, (Act{Act::Kind::generate, "CC6-access"}));
    world->runProposed();
    EXPECT_FALSE(world->proposedActionName().has_value());
    EXPECT_EQ(*world->status, "Writing policy for CC6-access on-device…");
    world.transcript();
    world->runProposed();
    EXPECT_TRUE(happened(world, {"proposed none"})) << "a proposal runs once";
}

TEST_F(Chat, AStepForACriterionThatWasClosedMeanwhileIsNotProposed) {
    start();
    world->askAssistant("draft the access policy");
    world.eventLoop.drain();
    world->attestRoleControl({"CC6-access", "Review", "attest"});
    world.model.answer(answer("Sure.", "generate:CC6-access"));
    EXPECT_FALSE(world->proposedActionName().has_value());
}

TEST_F(Chat, ABlankQuestionChangesNothingAndWithoutAModelTheAnswerIsTheFixedText) {
    start();
    world->askAssistant(" \n\t\u00A0");
    EXPECT_TRUE(happened(world, {}));
    world.model.unavailable = "off";
    world->askAssistant("hello");
    world.eventLoop.drain();
    EXPECT_TRUE(
        happened(world, {"busy true", "proposed none", "chat you: hello", "reply " + unavailable,
                         "chat pellum: " + unavailable, "busy false"}));
}

TEST_F(Chat, TheContextWithoutAMeshAndWithEverythingMet) {
    world.start();
    world->askAssistant("q");
    world.eventLoop.drain();
    EXPECT_EQ(
        world.model.requests.at(0).prompt,
        "Current state:\nOwner: not yet verified\nReadiness: 0.0% (0/13 criteria met)\n\nUser: q");
    world.startAsOwner({{"A", 1, 1}}).askAssistant("q");
    world.eventLoop.drain();
    EXPECT_THAT(world.model.requests.back().prompt,
                HasSubstr("met)\nOpen gaps: none — every criterion is met.\n\nUser: q"));
}

TEST_F(Chat, TheProposalIsClearedByTheNextQuestionAndTheUploadRunsOnce) {
    start();
    ask("upload", "Sure.", "ADD_EVIDENCE");
    EXPECT_EQ(world->proposedActionName(), "Add evidence");
    EXPECT_FALSE(world->proposedAction->has_value());
    EXPECT_EQ(world.events().back().at("proposed"), true);
    world->runProposed();
    EXPECT_EQ(world.filePanel.requests.back().prompt, "Add evidence");
    EXPECT_FALSE(world->proposedActionName().has_value());
    ask("start", "Ok.", "play");
    EXPECT_EQ(world->proposedActionName(), "Play");
    ask("thanks", "Welcome.", "none");
    EXPECT_FALSE(world->proposedActionName().has_value());
    EXPECT_EQ(world.events().back().at("proposed"), false);
}

TEST_F(Chat, OverlappingQuestionsAreAnsweredAsTheAnswersArrive) {
    start();
    world->askAssistant("one");
    world->askAssistant("two");
    world.eventLoop.drain();
    world.model.answer(answer("second", "play"), 1);
    EXPECT_FALSE(*world->assistantBusy) << "the first to finish ends the busy state";
    world.model.answer(answer("first", "none"));
    EXPECT_EQ(world->proposedActionName(), "Play")
        << "an answer without a step leaves a step alone";
    EXPECT_EQ(*world->reply, "first");
    EXPECT_EQ(world->chat->size(), 4U);
}

TEST_F(Chat, TheHistoryIsWrittenAtEachLineAndReadAtTheNextStart) {
    start();
    ask("a/b \"é\"", "<b>plain</b>", "none");
    const auto lines = std::vector<ChatMsg>(world->chat->begin(), world->chat->end());
    for (const ChatMsg& line : lines)
        EXPECT_TRUE(isUuid(line.id)) << line.id;
    const Json file = Json::parse(*readFile(world.project() / "chat-history.json"));
    ASSERT_EQ(file.size(), 2U);
    EXPECT_EQ(file[0], (Json{{"id", lines[0].id},
                             {"role", "you"},
                             {"text", "a/b \"é\""},
                             {"ts", "2026-01-31T09:15:02Z"}}));
    world.start();
    EXPECT_EQ(std::vector<ChatMsg>(world->chat->begin(), world->chat->end()), lines);
    world->askAssistant("more");
    EXPECT_EQ(Json::parse(*readFile(world.project() / "chat-history.json")).size(), 3U);
    std::filesystem::remove_all(world.project());
    world->askAssistant("unsaved");
    EXPECT_EQ(world->chat->size(), 4U);
}

TEST_F(Chat, AnAnswerForAnEngineThatIsGoneIsDropped) {
    start();
    world->askAssistant("q");
    world.eventLoop.drain();
    world->generatePolicy("CC6-access");
    world.stop();
    world.eventLoop.drain();
    world.model.answer(answer("late", "play"));
    EXPECT_EQ(world.model.open(), 0U) << "the draft was not even asked for";
}

TEST(AssistantActions, OnlyTheKnownTokensProposeAnything) {
    const SOC2Mesh mesh{{{"CC6-access", 0.4, 1, ""}, {"CC7-logs", 1, 1, ""}, {"ÄB", 0, 1, ""}}};
    const auto act = [](Act::Kind kind, const std::string& id = "") {
        return ProposedStep{Act{kind, id}, false};
    };
    const std::pair<const char*, ProposedStep> table[] = {
        {"play", act(Act::Kind::play)},
        {"pause", act(Act::Kind::pause)},
        {"snapshot_os", act(Act::Kind::snapshot)},
        {"add_evidence", {std::nullopt, true}},
        {"generate: cc6-access ", act(Act::Kind::generate, "CC6-access")},
        {"generate:äb", act(Act::Kind::generate, "ÄB")},
    };
    for (const auto& [token, step] : table)
        EXPECT_EQ(proposedStep(token, &mesh), step) << token;
    for (const char* token : {"generate:cc7-logs", "generate:cc6", "generate:", "readiness", "none",
                              "bond", "kyc", "play now", "close:cc6-access", ""})
        EXPECT_EQ(proposedStep(token, &mesh), ProposedStep{}) << token;
    EXPECT_EQ(proposedStep("generate:cc6-access", nullptr), ProposedStep{});
}

TEST(AssistantActions, EveryActHasAName) {
    const std::pair<Act, const char*> table[] = {
        {{Act::Kind::closeGap, "A"}, "Close A"},
        {{Act::Kind::generate, "A"}, "Generate A policy"},
        {{Act::Kind::play}, "Play"},
        {{Act::Kind::pause}, "Pause"},
        {{Act::Kind::throttle}, "Reduce exposure"},
        {{Act::Kind::bond}, "Approve & save"},
        {{Act::Kind::kyc}, "Verify identity"},
        {{Act::Kind::snapshot}, "Check this device"},
    };
    for (const auto& [act, name] : table)
        EXPECT_EQ(actionName(act), name);
}

} // namespace
} // namespace kelvo::test
