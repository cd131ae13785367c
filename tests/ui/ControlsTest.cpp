// Every control calls its operation of the real engine, by real clicks.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>

#include "Stage.h"

namespace kelvo::test {
namespace {

class Controls : public testing::Test {
protected:
    void openOrganisation(const char* role = nullptr) {
        stage.writeOrganisation();
        stage.open();
        if (role != nullptr) stage.verify(role);
    }

    void stageDocument(const char* answer) {
        stage.world.filePanel.choice = stage.world.write("register.txt", "Vendors");
        stage.click("Add evidence (upload doc)");
        stage.world.model.answer(std::string(answer));
        stage.settle();
    }

    double gate(const std::string& criterion) {
        const SOC2Mesh::Node* node = (*stage.engine().mesh)->find(criterion);
        return node == nullptr ? -1 : node->g;
    }

    std::vector<std::string> eventKinds() { return stage.world.eventKinds(); }

    Stage stage;
};

TEST_F(Controls, PlayAndPause) {
    stage.open();
    stage.click("Play");
    EXPECT_TRUE(*stage.engine().running);
    stage.click("Pause");
    EXPECT_FALSE(*stage.engine().running);
    EXPECT_TRUE(stage.engine().pending->has_value());
}

TEST_F(Controls, BondSealsWhatIsStaged) {
    stage.open();
    stage.engine().pause();
    stage.settle();
    stage.click("Bond — approve & seal");
    EXPECT_FALSE(stage.engine().pending->has_value());
    EXPECT_EQ(stage.engine().totems->size(), 1U);
    EXPECT_EQ(stage.named("pendingSection"), nullptr);
}

TEST_F(Controls, TheChosenRoleIsTheOneThatIsVerified) {
    openOrganisation();
    QQuickItem* picker = nullptr;
    for (QQuickItem* item : stage.items()) {
        if (item->inherits("QQuickComboBox")) picker = item;
    }
    ASSERT_NE(picker, nullptr);
    picker->forceActiveFocus();
    stage.press(Qt::Key_Down);
    stage.click("Verify identity as Engineer");
    EXPECT_EQ(stage.engine().role->value_or("none"), "Engineer");
    EXPECT_EQ(stage.named("kycSection"), nullptr);
}

TEST_F(Controls, WithoutRolesTheOwnerIsVerified) {
    stage.open();
    stage.click("Verify identity as user");
    EXPECT_EQ(stage.engine().role->value_or("none"), "Owner");
}

TEST_F(Controls, ADeniedIdentityLeavesTheForm) {
    openOrganisation();
    stage.world.authentication.answer = false;
    stage.click("Verify identity as Owner");
    EXPECT_TRUE(stage.shows("Identity not verified."));
    EXPECT_NE(stage.named("kycSection"), nullptr);
}

TEST_F(Controls, TheNextBestActionRuns) {
    openOrganisation();
    stage.click("Verify identity");
    EXPECT_EQ(stage.engine().role->value_or("none"), "Owner");
    stage.world.filePanel.choice = stage.world.write("review.txt", "Access review");
    stage.click("Close with evidence");
    EXPECT_EQ(gate("CC6-access"), 1.0);
    EXPECT_TRUE(stage.shows("Closed CC6-access: readiness 51.2%→62.8%."));
    EXPECT_TRUE(stage.shows("62.8%"));
}

TEST_F(Controls, TheReminderRunsTheSameActionAndGoesOnceTheCardIsSeen) {
    stage.writeOrganisation();
    stage.open(860, 560);
    QQuickItem* reminder = stage.named("nextActionReminder");
    ASSERT_NE(reminder, nullptr);
    const QPoint middle =
        reminder->mapToScene(QPointF(reminder->width() / 2, reminder->height() / 2)).toPoint();
    QTest::mouseClick(&stage.window(), Qt::LeftButton, Qt::NoModifier, middle);
    stage.settle();
    EXPECT_TRUE(stage.engine().principal->has_value());
    stage.named("nextAction")->forceActiveFocus();
    stage.settle();
    EXPECT_EQ(stage.named("nextActionReminder"), nullptr);
}

TEST_F(Controls, ARolesTasksAreCompletedInTheirOwnWays) {
    openOrganisation("Engineer");
    stage.click("Check this device");
    EXPECT_EQ(gate("CC6-device-security"), 1.0);
    stage.click("Acknowledge (Touch ID)");
    EXPECT_EQ(gate("CC6-access"), 1.0);
    EXPECT_TRUE(stage.shows("3/4 of your tasks complete"));
    EXPECT_TRUE(stage.shows("75%"));
    stage.click("Generate");
    ASSERT_EQ(stage.world.model.open(), 1U);
    stage.world.model.answer("Plan");
    stage.settle();
    EXPECT_EQ((*stage.engine().generatedDoc)->criterion, "CC7-incidents");
}

TEST_F(Controls, APolicyIsGeneratedForTheCriterionOfItsRow) {
    openOrganisation("Owner");
    QQuickItem* button = nullptr;
    for (QQuickItem* item : stage.items(stage.named("readinessSection"))) {
        if (!item->inherits("QQuickAbstractButton")) continue;
        button = item; // the last row's
    }
    ASSERT_NE(button, nullptr);
    stage.click(button);
    ASSERT_EQ(stage.world.model.open(), 1U);
    EXPECT_TRUE(stage.shows("Writing policy for C1-confidentiality on-device…"));
}

TEST_F(Controls, ADraftIsApproved) {
    openOrganisation("Owner");
    stage.engine().generatePolicy("CC6-access");
    stage.settle();
    stage.world.model.answer("The policy");
    stage.settle();
    stage.click("Approve & seal (Touch ID)");
    EXPECT_EQ(gate("CC6-access"), 1.0);
    EXPECT_EQ(stage.named("draftSection"), nullptr);
}

TEST_F(Controls, ADiscardedDraftWritesNothing) {
    openOrganisation("Owner");
    stage.engine().generatePolicy("CC6-access");
    stage.settle();
    stage.world.model.answer("The policy");
    stage.settle();
    const auto files = stage.world.files();
    stage.click("Discard");
    EXPECT_FALSE(stage.engine().generatedDoc->has_value());
    EXPECT_EQ(stage.named("draftSection"), nullptr);
    EXPECT_EQ(stage.world.files(), files);
}

TEST_F(Controls, SuggestedCriteriaAreOnAndOnlyWhatStaysOnIsSealed) {
    openOrganisation("Owner");
    stageDocument(R"({"criteria":["CC9-vendor-risk","CC3-risk","CC6-access"],"summary":"s"})");
    for (const char* id : {"CC9-vendor-risk", "CC3-risk", "CC6-access"}) {
        ASSERT_NE(stage.control(id), nullptr) << id;
        EXPECT_TRUE(stage.control(id)->property("checked").toBool()) << id;
    }
    stage.click("CC3-risk");
    stage.click("Approve & seal evidence");
    EXPECT_EQ(gate("CC9-vendor-risk"), 1.0);
    EXPECT_EQ(gate("CC6-access"), 1.0);
    EXPECT_EQ(gate("CC3-risk"), 0.5);
    EXPECT_EQ(stage.control("Approve & seal evidence"), nullptr);
    EXPECT_NE(stage.control("Add evidence (upload doc)"), nullptr);
}

TEST_F(Controls, NothingSelectedCannotBeSealed) {
    openOrganisation("Owner");
    stageDocument(R"({"criteria":["CC9-vendor-risk"],"summary":"s"})");
    EXPECT_TRUE(stage.control("Approve & seal evidence")->isEnabled());
    stage.click("CC9-vendor-risk");
    EXPECT_FALSE(stage.control("Approve & seal evidence")->isEnabled());
    stage.click("CC9-vendor-risk");
    EXPECT_TRUE(stage.control("Approve & seal evidence")->isEnabled());
}

TEST_F(Controls, WithoutSuggestionsTheOpenGapsAreOffered) {
    openOrganisation("Owner");
    stageDocument(R"({"criteria":[],"summary":"s"})");
    EXPECT_FALSE(stage.control("Approve & seal evidence")->isEnabled());
    ASSERT_NE(stage.control("CC4-monitoring"), nullptr);
    EXPECT_FALSE(stage.control("CC4-monitoring")->property("checked").toBool());
    EXPECT_EQ(stage.control("CC1-ethics"), nullptr) << "a criterion that is met is no gap";
    stage.click("CC4-monitoring");
    stage.click("Approve & seal evidence");
    EXPECT_EQ(gate("CC4-monitoring"), 1.0);
}

TEST_F(Controls, ANewProposalSelectsItsOwnCriteria) {
    openOrganisation("Owner");
    stageDocument(R"({"criteria":["CC9-vendor-risk"],"summary":"s"})");
    stage.click("CC9-vendor-risk");
    stageDocument(R"({"criteria":["CC9-vendor-risk","CC3-risk"],"summary":"s"})");
    EXPECT_TRUE(stage.control("CC9-vendor-risk")->property("checked").toBool());
    EXPECT_TRUE(stage.control("CC3-risk")->property("checked").toBool());
}

TEST_F(Controls, RefreshAndResolveReadTheDeviceAnew) {
    openOrganisation("Auditor");
    stage.world.processes.outputs.clear();
    stage.click("Refresh");
    EXPECT_EQ(stage.engine().osFacts->front().value, "unknown");
    EXPECT_TRUE(stage.shows("unknown"));
    stage.world.processes.secure();
    stage.click("Re-solve verified");
    EXPECT_TRUE(stage.engine().osFacts->front().ok);
}

TEST_F(Controls, AQuestionLeavesTheFieldBeforeItsAnswerArrives) {
    openOrganisation();
    QQuickItem* field = stage.named("question");
    field->forceActiveFocus();
    stage.type("  What next? ");
    stage.press(Qt::Key_Return);
    EXPECT_EQ(field->property("text").toString(), "");
    EXPECT_TRUE(stage.shows("What next?"));
    EXPECT_TRUE(*stage.engine().assistantBusy);
    EXPECT_EQ(stage.control("Send"), nullptr) << "the indicator has taken its place";
    stage.type("And then?");
    stage.press(Qt::Key_Return);
    EXPECT_EQ(stage.world.model.open(), 2U) << "a second question may overlap";
}

TEST_F(Controls, WhatTheModelIsAtIsShownAndCanBeGivenUp) {
    openOrganisation("Owner");
    EXPECT_EQ(stage.named("cancelModelWork"), nullptr);
    stage.engine().generatePolicy("CC6-access");
    stage.engine().askAssistant("What next?");
    stage.settle();
    EXPECT_TRUE(stage.shows("Writing the policy for CC6-access and 1 more"));
    stage.world.model.answer(std::string("A policy"));
    stage.settle();
    EXPECT_TRUE(stage.shows("Answering your question"));
    stage.click(stage.named("cancelModelWork"));
    EXPECT_EQ(stage.world.model.open(), 0U);
    EXPECT_FALSE(*stage.engine().assistantBusy);
    EXPECT_EQ(stage.named("cancelModelWork"), nullptr);
}

TEST_F(Controls, TheConversationStaysAtItsNewestLine) {
    openOrganisation();
    for (int i = 0; i < 12; ++i) {
        stage.engine().askAssistant("Question " + std::to_string(i));
        stage.settle();
        stage.world.model.fail("none");
        stage.settle();
    }
    const QQuickItem* chat = stage.named("chat");
    EXPECT_GT(chat->property("contentHeight").toDouble(), 2 * chat->height());
    EXPECT_TRUE(chat->property("atYEnd").toBool()) << chat->property("contentY").toDouble();
}

TEST_F(Controls, TheProposedStepRunsOnce) {
    openOrganisation();
    stage.named("question")->forceActiveFocus();
    stage.type("Run it");
    for (QQuickItem* item : stage.items(stage.named("assistantSection"))) {
        if (item->inherits("QQuickAbstractButton")) stage.click(item);
    }
    ASSERT_EQ(stage.world.model.open(), 1U);
    stage.world.model.answer(R"({"answer":"Yes.","action":"play"})");
    stage.settle();
    stage.click("Do it: Play");
    EXPECT_TRUE(*stage.engine().running);
    EXPECT_EQ(stage.control("Do it: Play"), nullptr);
}

TEST_F(Controls, LinesOfAnEarlierRunAreShown) {
    stage.world.write(stage.world.project() / "chat-history.json",
                      R"([{"id":"A0000000-0000-4000-8000-000000000000","role":"you",)"
                      R"("text":"From yesterday","ts":"2026-01-30T09:00:00Z"}])");
    stage.open();
    EXPECT_TRUE(stage.shows("From yesterday"));
}

TEST_F(Controls, ABlankQuestionIsIgnored) {
    stage.open();
    stage.named("question")->forceActiveFocus();
    stage.type("   ");
    stage.press(Qt::Key_Return);
    EXPECT_TRUE(stage.engine().chat->empty());
    EXPECT_EQ(stage.named("question")->property("text").toString(), "");
}

} // namespace
} // namespace kelvo::test
