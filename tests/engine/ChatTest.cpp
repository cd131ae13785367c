#include "base/Files.h"
#include "base/Uuid.h"
#include "support/World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvo {
namespace {

using ::testing::ElementsAre;

const std::string unavailable =
    "On-device assistant unavailable right now — use the buttons on the right.";

std::string answer(const std::string& text, const std::string& action) {
    return Json{{"answer", text}, {"action", action}}.dump();
}

class Chat : public ::testing::Test {
protected:
    EngineVM& start() {
        return world.startAsOwner(
            {{"CC6-access", 0.4, 1, "x GAP: no review "}, {"CC7-logs", 1, 1}});
    }
    void ask(const std::string& question, const std::string& text, const std::string& action) {
        world.engine().askAssistant(question);
        world.eventLoop.drain();
        world.model.answer(answer(text, action));
    }

    test::World world;
};

TEST_F(Chat, AQuestionIsAnsweredFromTheLiveState) {
    EngineVM& vm = start();
    vm.askAssistant(" \n what next?\u2003");
    world.eventLoop.drain();
    EXPECT_EQ(
        world.model.requests.at(0).prompt,
        "Current state:\nOwner: Ada Byron\nReadiness: 70.0% (1/13 criteria met)\n"
        "Open gaps (criterion id — what's needed):\n- CC6-access: no review\n\nUser: what next?");
    EXPECT_TRUE(*vm.assistantBusy);
    world.model.answer(answer("Close the gap.", " Generate: cc6-ACCESS \n"));
    EXPECT_THAT(
        world.transcript(),
        ElementsAre(
            "busy true", "proposed none", "chat you: what next?", "reply Close the gap.",
            "chat pellum: Close the gap.", "proposed Generate CC6-access policy",
            R"(event {"action":"generate: cc6-access","chars":10,"kind":"assistant_ask","proposed":true})",
            "busy false"));
    EXPECT_EQ(**vm.proposedAction, (Act{Act::Kind::generate, "CC6-access"}));
    vm.runProposed();
    EXPECT_FALSE(vm.proposedActionName().has_value());
    EXPECT_EQ(*vm.status, "Writing policy for CC6-access on-device…");
    world.transcript();
    vm.runProposed();
    EXPECT_THAT(world.transcript(), ElementsAre("proposed none")) << "a proposal runs once";
}

TEST_F(Chat, AStepForACriterionThatWasClosedMeanwhileIsNotProposed) {
    EngineVM& vm = start();
    vm.askAssistant("draft the access policy");
    world.eventLoop.drain();
    vm.attestRoleControl({"CC6-access", "Review", "attest"});
    world.model.answer(answer("Sure.", "generate:CC6-access"));
    EXPECT_FALSE(vm.proposedActionName().has_value());
}

TEST_F(Chat, ABlankQuestionChangesNothing) {
    EngineVM& vm = start();
    vm.askAssistant(" \n\t\u00A0");
    EXPECT_THAT(world.transcript(), ElementsAre());
}

TEST_F(Chat, WithoutAModelTheAnswerIsTheFixedText) {
    EngineVM& vm = start();
    world.model.unavailable = "off";
    vm.askAssistant("hello");
    world.eventLoop.drain();
    EXPECT_THAT(world.transcript(),
                ElementsAre("busy true", "proposed none", "chat you: hello", "reply " + unavailable,
                            "chat pellum: " + unavailable, "busy false"));
}

TEST_F(Chat, TheContextWithoutAMeshAndWithEverythingMet) {
    EngineVM& vm = world.start();
    vm.askAssistant("q");
    world.eventLoop.drain();
    EXPECT_EQ(
        world.model.requests.at(0).prompt,
        "Current state:\nOwner: not yet verified\nReadiness: 0.0% (0/13 criteria met)\n\nUser: q");
    world.startAsOwner({{"A", 1, 1}}).askAssistant("q");
    world.eventLoop.drain();
    EXPECT_THAT(world.model.requests.back().prompt,
                ::testing::HasSubstr("met)\nOpen gaps: none — every criterion is met.\n\nUser: q"));
}

TEST_F(Chat, TheProposalIsClearedByTheNextQuestionAndTheUploadRunsOnce) {
    EngineVM& vm = start();
    ask("upload", "Sure.", "ADD_EVIDENCE");
    EXPECT_EQ(vm.proposedActionName(), "Add evidence");
    EXPECT_FALSE(vm.proposedAction->has_value());
    EXPECT_EQ(world.events().back().at("proposed"), true);
    vm.runProposed();
    EXPECT_EQ(world.filePanel.requests.back().prompt, "Add evidence");
    EXPECT_FALSE(vm.proposedActionName().has_value());
    ask("start", "Ok.", "play");
    EXPECT_EQ(vm.proposedActionName(), "Play");
    ask("thanks", "Welcome.", "none");
    EXPECT_FALSE(vm.proposedActionName().has_value());
    EXPECT_EQ(world.events().back().at("proposed"), false);
}

TEST_F(Chat, OverlappingQuestionsAreAnsweredAsTheAnswersArrive) {
    EngineVM& vm = start();
    vm.askAssistant("one");
    vm.askAssistant("two");
    world.eventLoop.drain();
    world.model.answer(answer("second", "play"), 1);
    EXPECT_FALSE(*vm.assistantBusy) << "the first to finish ends the busy state";
    world.model.answer(answer("first", "none"));
    EXPECT_EQ(vm.proposedActionName(), "Play") << "an answer without a step leaves a step alone";
    EXPECT_EQ(*vm.reply, "first");
    EXPECT_EQ(vm.chat->size(), 4U);
}

TEST_F(Chat, TheHistoryIsWrittenAtEachLineAndReadAtTheNextStart) {
    EngineVM& vm = start();
    ask("a/b \"é\"", "<b>plain</b>", "none");
    const auto lines = std::vector<ChatMsg>(vm.chat->begin(), vm.chat->end());
    for (const ChatMsg& line : lines)
        EXPECT_TRUE(isUuid(line.id)) << line.id;
    const Json file = Json::parse(*readFile(world.project() / "chat-history.json"));
    ASSERT_EQ(file.size(), 2U);
    EXPECT_EQ(file[0], (Json{{"id", lines[0].id},
                             {"role", "you"},
                             {"text", "a/b \"é\""},
                             {"ts", "2026-01-31T09:15:02Z"}}));
    EngineVM& again = world.start();
    EXPECT_EQ(std::vector<ChatMsg>(again.chat->begin(), again.chat->end()), lines);
    again.askAssistant("more");
    EXPECT_EQ(Json::parse(*readFile(world.project() / "chat-history.json")).size(), 3U);
    std::filesystem::remove_all(world.project());
    again.askAssistant("unsaved");
    EXPECT_EQ(again.chat->size(), 4U);
}

TEST_F(Chat, AnAnswerForAnEngineThatIsGoneIsDropped) {
    start().askAssistant("q");
    world.eventLoop.drain();
    world.engine().generatePolicy("CC6-access");
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
    const struct {
        std::string token;
        ProposedStep step;
    } table[] = {
        {"play", act(Act::Kind::play)},
        {"pause", act(Act::Kind::pause)},
        {"snapshot_os", act(Act::Kind::snapshot)},
        {"add_evidence", {std::nullopt, true}},
        {"generate: cc6-access ", act(Act::Kind::generate, "CC6-access")},
        {"generate:äb", act(Act::Kind::generate, "ÄB")},
        {"generate:cc7-logs", {}},
        {"generate:cc6", {}},
        {"generate:", {}},
        {"readiness", {}},
        {"none", {}},
        {"bond", {}},
        {"kyc", {}},
        {"play now", {}},
        {"close:cc6-access", {}},
        {"", {}},
    };
    for (const auto& row : table)
        EXPECT_EQ(proposedStep(row.token, &mesh), row.step) << row.token;
    EXPECT_EQ(proposedStep("generate:cc6-access", nullptr), ProposedStep{});
}

TEST(AssistantActions, EveryActHasAName) {
    const struct {
        Act act;
        std::string name;
    } table[] = {
        {{Act::Kind::closeGap, "A"}, "Close A"},
        {{Act::Kind::generate, "A"}, "Generate A policy"},
        {{Act::Kind::play}, "Play"},
        {{Act::Kind::pause}, "Pause"},
        {{Act::Kind::throttle}, "Reduce exposure"},
        {{Act::Kind::bond}, "Approve & save"},
        {{Act::Kind::kyc}, "Verify identity"},
        {{Act::Kind::snapshot}, "Check this device"},
    };
    for (const auto& row : table)
        EXPECT_EQ(actionName(row.act), row.name);
}

} // namespace
} // namespace kelvo
