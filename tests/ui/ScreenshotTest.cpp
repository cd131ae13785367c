// Pictures of the window in its states, for a person to look at. They are written where
// KELVO_SCREENSHOTS names a folder; nothing compares them.

#include "support/TemporaryDirectory.h"
#include "ui/DialogFilePanel.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTimer>
#include <fstream>

#include "Stage.h"

namespace kelvo::test {
namespace {

struct Size {
    int width;
    int height;
    const char* name;
};

class Screenshots : public testing::Test {
protected:
    void SetUp() override {
        if (!pictureFolder()) GTEST_SKIP() << "KELVO_SCREENSHOTS names no folder";
    }

    void picture(const QString& name) {
        stage.rest();
        for (const bool dark : {false, true}) {
            stage.setDark(dark);
            stage.settle();
            stage.save(name + (dark ? "-dark" : "-light"));
        }
    }

    void scrollTo(const char* objectName) {
        QQuickItem* section = stage.named(objectName);
        QQuickItem* scroller = stage.named("rightScroller");
        ASSERT_NE(section, nullptr);
        const double top =
            section->mapToItem(scroller->property("contentItem").value<QQuickItem*>(), {}).y();
        const double last = scroller->property("contentHeight").toDouble() - scroller->height();
        scroller->setProperty("contentY", std::min(top - 12, last));
    }

    Stage stage;
};

TEST_F(Screenshots, OfAFreshStart) {
    stage.writeOrganisation();
    stage.open(860, 560);
    picture("start-860x560");
    stage.window().resize(1440, 900);
    picture("start-1440x900");
}

TEST_F(Screenshots, OfTheOwnersWork) {
    stage.writeOrganisation();
    stage.open(1440, 900);
    stage.verify("Owner");
    picture("owner-1440x900");
    scrollTo("readinessSection");
    picture("owner-readiness");
    scrollTo("provenanceSection");
    picture("owner-provenance");
    stage.window().resize(860, 560);
    stage.settle();
    scrollTo("nextActionSection");
    picture("owner-860x560");
    scrollTo("readinessSection");
    picture("owner-readiness-860x560");
}

TEST_F(Screenshots, OfARunningAndAPendingModel) {
    stage.open(1440, 900);
    stage.engine().play();
    stage.world.ticker.fire(30);
    picture("running");
    stage.world.ticker.fire(100);
    picture("pending");
    stage.verify("Owner");
    stage.engine().bondCollapse();
    picture("sealed");
}

TEST_F(Screenshots, OfEvidenceAndADraft) {
    stage.writeOrganisation();
    stage.open(1440, 900);
    stage.verify("Owner");
    stage.world.filePanel.choice = stage.world.write("vendor-register.txt", "Vendors and risks");
    stage.engine().addEvidence();
    stage.settle();
    stage.world.model.answer(R"({"criteria":["CC9-vendor-risk","CC3-risk"],)"
                             R"("summary":"A register of vendors with a risk rating for each."})");
    stage.engine().generatePolicy("CC7-incidents");
    stage.settle();
    stage.world.model.answer(
        "Incident response policy\n\nPurpose\nThis policy says how incidents are found, contained "
        "and learned from.\n\nScope\nAll services that the on-call rota covers.\n\nPolicy\n1. The "
        "on-call person acknowledges every alert.\n2. The plan is tested twice a year.\n");
    stage.engine().askAssistant("What should I do next?");
    stage.settle();
    stage.world.model.answer(R"({"answer":"Close CC6-access first. It has the largest weight )"
                             R"(among the open criteria.","action":"generate: CC6-access"})");
    picture("draft");
    scrollTo("draftSection");
    picture("draft-section");
    scrollTo("evidenceSection");
    picture("evidence");
}

TEST_F(Screenshots, OfTheFileChooser) {
    stage.open(860, 560);
    const TemporaryDirectory folder;
    for (const char* name : {"access-review.pdf", "incident-exercise.md", "vendor-register.txt"})
        std::ofstream(folder.path() / name) << name;
    for (const bool dark : {false, true}) {
        stage.setDark(dark);
        QTimer::singleShot(0, [&] {
            stage.rest();
            stage.save(dark ? "chooser-dark" : "chooser-light");
            stage.press(Qt::Key_Escape);
        });
        const QString before = QDir::currentPath();
        QDir::setCurrent(QString::fromStdString(folder.path().string()));
        DialogFilePanel().choose({"Attach evidence", "Select an evidence artifact", {}});
        QDir::setCurrent(before);
    }
}

TEST_F(Screenshots, OfAllControlFamilies) {
    stage.writeOrganisation();
    stage.open(1440, 900);
    for (const SOC2Template& family : stage.engine().templates())
        stage.engine().adopt(family);
    stage.engine().play();
    stage.world.ticker.fire(120);
    stage.settle();
    picture("families");
}

TEST_F(Screenshots, OfTheOtherRoles) {
    stage.writeOrganisation();
    stage.open(1440, 900);
    stage.verify("Engineer");
    picture("engineer");
    scrollTo("responsibilitiesSection");
    picture("engineer-tasks");
    stage.verify("Auditor");
    scrollTo("auditorSection");
    picture("auditor");
}

} // namespace
} // namespace kelvo::test
