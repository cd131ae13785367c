// Every fixed text of the window, quoted once more and looked for in the state in which it shows.

#include <gtest/gtest.h>

#include "Stage.h"

namespace kelvo::test {
namespace {

class Census : public testing::Test {
protected:
    void expectTexts(const char* objectName, const QStringList& expected) {
        QQuickItem* root = objectName == nullptr ? nullptr : stage.named(objectName);
        ASSERT_TRUE(objectName == nullptr || root != nullptr) << objectName;
        const QStringList found = stage.texts(root);
        for (const QString& text : expected) {
            EXPECT_TRUE(found.contains(text)) << text.toStdString() << "\nis not among\n"
                                              << found.join("\n").toStdString();
        }
    }

    std::string symbolBefore(const QString& label) {
        QString last;
        for (const QQuickItem* item : stage.items()) {
            if (item->inherits("kelvo::SymbolItem")) last = item->property("name").toString();
            const bool words = item->inherits("QQuickText") || item->inherits("QQuickTextEdit");
            if (words && item->property("text").toString() == label) return last.toStdString();
        }
        return "no such text";
    }

    Stage stage;
};

TEST_F(Census, OfTheWindowAndTheLeftPane) {
    stage.writeOrganisation();
    stage.open();
    EXPECT_EQ(stage.window().title(), "Kelvo SOC2 Engine");
    EXPECT_EQ(stage.window().minimumSize(), QSize(860, 560));
    expectTexts(nullptr, {"State (totem-time)", "t", "0.000", "risk (∫R·f²)", "0.0000",
                          "totems on chain", "0", "equations", "status", "Chain", "Play"});
    EXPECT_TRUE(stage.shows(QString::fromStdString(*stage.engine().equations)));
    EXPECT_TRUE(stage.shows("loaded 5 nodes, 2 states"));
    EXPECT_EQ(symbolBefore("Play"), "play.fill");

    stage.engine().play();
    stage.world.ticker.fire(12);
    stage.settle();
    expectTexts(nullptr, {"0.120", "PLAY — unitary evolution (PENDING, reversible)", "Pause"});
    EXPECT_EQ(symbolBefore("Pause"), "pause.fill");
    EXPECT_EQ(stage.control("Play"), nullptr);
}

TEST_F(Census, OfAChainRow) {
    stage.open();
    stage.verify("Owner");
    stage.engine().pause();
    stage.engine().bondCollapse();
    stage.settle();
    QStringList rows;
    for (const QString& text : stage.texts()) {
        if (text.startsWith('[')) rows.append(text);
    }
    const auto& totems = *stage.engine().totems;
    ASSERT_EQ(totems.size(), 2U);
    const auto row = [&](int index, const char* title) {
        const std::string& hash = totems[static_cast<std::size_t>(1 - index)].blockHash;
        return QString::fromStdString("[" + std::to_string(index) + "] " + hash.substr(0, 10) +
                                      "… " + title);
    };
    EXPECT_EQ(
        rows.join('\n').toStdString(),
        QStringList({row(1, "collapse@t=0.000"), row(0, "Identity verified: Ada Byron (Owner)")})
            .join('\n')
            .toStdString());
    EXPECT_EQ(symbolBefore(rows[0]), "link");
}

TEST_F(Census, OfTheRightPaneAtTheStart) {
    stage.writeOrganisation();
    stage.open();
    expectTexts(nullptr, {"Ferrow — HITL"});
    expectTexts("assistantSection",
                {"Ask Pellum",
                 "Ask in plain English when you're stuck. Pellum reads your live readiness on this "
                 "Mac and can suggest one next step — you always confirm.",
                 "Ask Pellum…"});
    EXPECT_EQ(symbolBefore("Ask Pellum"), "apple.intelligence");
    expectTexts("kycSection",
                {"Get started",
                 "Pick your role, then confirm it's you. You'll only see the security "
                 "tasks that are yours.",
                 "Your role", "Verify identity as Owner"});
    EXPECT_EQ(symbolBefore("Verify identity as Owner"), "person.badge.shield.checkmark");
    expectTexts("nextActionSection",
                {"Your Next Best Action", "Verify your identity",
                 "Confirm who you are with Touch ID. This is the first record on your compliance "
                 "log — everything else builds on it.",
                 "Verify identity"});
    expectTexts("evidenceSection",
                {"Evidence",
                 "Upload a document. Apple Intelligence reads it on your Mac and "
                 "suggests which criteria it satisfies.",
                 "Add evidence (upload doc)"});
    EXPECT_EQ(symbolBefore("Add evidence (upload doc)"), "doc.badge.plus");
    expectTexts("osSection", {"OS snapshot (read-only)",
                              "We read your Mac's security settings without changing anything.",
                              "Refresh", "FileVault disk encryption", "on"});
    EXPECT_EQ(symbolBefore("Refresh"), "arrow.clockwise");
    EXPECT_EQ(symbolBefore("FileVault disk encryption"), "checkmark.circle.fill");
    expectTexts("provenanceSection", {"Provenance", "kernel RoleMap.load · role → SOC 2 controls",
                                      "2026-01-31T09:15:02Z"});
}

TEST_F(Census, OfTheVerificationButtonWithoutRoles) {
    stage.open();
    expectTexts("kycSection", {"Verify identity as user"});
}

TEST_F(Census, OfAnInsecureDevice) {
    stage.world.processes.outputs.clear();
    stage.open();
    expectTexts("osSection", {"FileVault disk encryption", "unknown"});
    EXPECT_EQ(symbolBefore("FileVault disk encryption"), "exclamationmark.circle");
}

TEST_F(Census, OfTheOwnersReadiness) {
    stage.writeOrganisation();
    stage.open();
    stage.verify("Owner");
    expectTexts("identitySection", {"You are: Ada Byron · Owner"});
    EXPECT_EQ(symbolBefore("You are: Ada Byron · Owner"), "person.crop.circle.badge.checkmark");
    expectTexts("readinessSection",
                {"SOC 2 readiness", "51.2%", "6/13 criteria met · solved Σ(g·w)/Σw", "CC1-ethics",
                 "CC6-access", "quarterly access review missing", "Generate policy"});
    EXPECT_EQ(symbolBefore("CC1-ethics"), "checkmark.seal.fill");
    EXPECT_EQ(symbolBefore("CC6-access"), "circle");
    const QStringList texts = stage.texts(stage.named("readinessSection"));
    EXPECT_FALSE(texts.contains("Code of conduct signed by all staff in January."))
        << "a criterion that is met has no gap";
    expectTexts("nextActionSection", {"Close CC6-access (verify)", "Close with evidence"});
}

TEST_F(Census, OfTheCardsButtonForEachSimulationAction) {
    stage.open();
    stage.verify("Owner");
    const auto button = [this] {
        QQuickItem* shown = stage.named("nextAction");
        return shown == nullptr ? QString() : shown->property("text").toString();
    };
    EXPECT_EQ(button(), "Approve & Save");
    EXPECT_EQ(symbolBefore("Approve & Save"), "touchid");
    stage.engine().play();
    stage.world.ticker.fire(20);
    stage.settle();
    EXPECT_EQ(button(), "") << "a card without an action has no button";
    stage.world.ticker.fire(100);
    stage.engine().bondCollapse();
    stage.settle();
    EXPECT_EQ(button(), "Reduce exposure");
    EXPECT_EQ(symbolBefore("Reduce exposure"), "arrow.down.right.circle");
}

TEST_F(Census, OfAPendingMeasurement) {
    stage.open();
    stage.engine().pause();
    stage.settle();
    expectTexts("pendingSection",
                {"Pending measurement", "A state is staged. Approve to record it on the chain.",
                 "Bond — approve & seal"});
    EXPECT_EQ(symbolBefore("Pending measurement"), "exclamationmark.triangle.fill");
    EXPECT_EQ(symbolBefore("Bond — approve & seal"), "touchid");
}

TEST_F(Census, OfAContributorsTasks) {
    stage.writeOrganisation();
    stage.open();
    stage.verify("Engineer");
    expectTexts("responsibilitiesSection",
                {"Your responsibilities", "25%", "1/4 of your tasks complete", "Check this device",
                 "Generate", "Acknowledge (Touch ID)", "Done",
                 "Confirm that changes are reviewed before release"});
    EXPECT_EQ(symbolBefore("Check this device"), "checkmark.shield");
    EXPECT_EQ(symbolBefore("Generate"), "doc.badge.gearshape");
    EXPECT_EQ(symbolBefore("Acknowledge (Touch ID)"), "touchid");
    EXPECT_EQ(symbolBefore("Confirm the quarterly access review"), "circle");
    EXPECT_EQ(symbolBefore("Confirm that changes are reviewed before release"),
              "checkmark.seal.fill");
}

TEST_F(Census, OfTheAuditorsView) {
    stage.writeOrganisation();
    stage.open();
    stage.verify("Auditor");
    expectTexts("auditorSection",
                {"Verify (read-only)",
                 "You have read-only access. Review the readiness and each criterion's state.",
                 "51.2%", "6/13 criteria met · solved Σ(g·w)/Σw", "met",
                 "quarterly access review missing", "Re-solve verified"});
    EXPECT_EQ(symbolBefore("CC1-ethics"), "checkmark.seal.fill");
    EXPECT_EQ(symbolBefore("CC6-access"), "exclamationmark.circle");
    EXPECT_EQ(symbolBefore("Re-solve verified"), "checkmark.arrow.trianglehead.counterclockwise");
}

TEST_F(Census, OfAStagedDocument) {
    stage.writeOrganisation();
    stage.open();
    stage.world.filePanel.choice = stage.world.write("register.txt", "Vendors");
    stage.engine().addEvidence();
    stage.settle();
    stage.world.model.answer(R"({"criteria":["CC9-vendor-risk"],"summary":"A vendor register."})");
    stage.settle();
    expectTexts("evidenceSection", {"register.txt", "A vendor register.",
                                    "Suggested criteria — toggle to confirm:", "CC9-vendor-risk",
                                    "Approve & seal evidence"});
    EXPECT_EQ(symbolBefore("register.txt"), "doc.text");
    EXPECT_EQ(symbolBefore("Approve & seal evidence"), "touchid");

    stage.engine().addEvidence();
    stage.settle();
    stage.world.model.fail("gone");
    stage.settle();
    expectTexts("evidenceSection", {"On-device mapping unavailable — choose criteria manually.",
                                    "No criteria suggested — choose from open gaps manually:",
                                    "CC6-access", "CC6-device-security", "C1-confidentiality"});
}

TEST_F(Census, OfADraft) {
    stage.writeOrganisation();
    stage.open();
    stage.engine().generatePolicy("CC6-access");
    stage.settle();
    stage.world.model.answer("Access policy\n<b>Purpose</b>");
    stage.settle();
    expectTexts(
        "draftSection",
        {"Review generated policy",
         R"(Apple Intelligence wrote this policy on your Mac from CC6-access's own facts. Read it, then approve to record it.)",
         "Access policy\n<b>Purpose</b>", "Approve & seal (Touch ID)", "Discard"});
    EXPECT_EQ(symbolBefore("Approve & seal (Touch ID)"), "touchid");
}

TEST_F(Census, OfAConversation) {
    stage.writeOrganisation();
    stage.open();
    stage.engine().askAssistant("What next?");
    stage.settle();
    stage.world.model.answer(R"({"answer":"Add a document.","action":"add_evidence"})");
    stage.settle();
    expectTexts("assistantSection", {"What next?", "Add a document.", "Do it: Add evidence"});
    EXPECT_EQ(symbolBefore("Add a document."), "apple.intelligence");
    EXPECT_EQ(symbolBefore("Do it: Add evidence"), "checkmark.circle.fill");

    stage.engine().askAssistant("And now?");
    stage.settle();
    stage.world.model.fail("gone");
    stage.settle();
    expectTexts("assistantSection",
                {"On-device assistant unavailable right now — use the buttons on the right."});
    EXPECT_EQ(stage.control("Do it: Add evidence"), nullptr);
}

} // namespace
} // namespace kelvo::test
