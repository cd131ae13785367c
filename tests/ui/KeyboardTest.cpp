// The window by keyboard alone, and what it tells assistive technology.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleInterface>

#include "Stage.h"

namespace kelvo::test {
namespace {

class Keyboard : public testing::Test {
protected:
    bool running() { return *stage.engine().running; }
    Stage stage;
};

TEST_F(Keyboard, SpaceTogglesPlayAndPause) {
    stage.open();
    stage.press(Qt::Key_Space);
    EXPECT_TRUE(running());
    stage.press(Qt::Key_Space);
    EXPECT_FALSE(running());
    stage.press(Qt::Key_Space, Qt::ControlModifier);
    stage.press(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_FALSE(running()) << "with a modifier it is another key";
}

TEST_F(Keyboard, SpaceInTheQuestionIsASpace) {
    stage.open();
    QQuickItem* field = stage.named("question");
    field->forceActiveFocus();
    stage.type("a b");
    EXPECT_EQ(field->property("text").toString(), "a b");
    EXPECT_FALSE(running());
}

TEST_F(Keyboard, SpaceOnAFocusedButtonPressesThatButton) {
    stage.writeOrganisation();
    stage.open();
    stage.world.processes.outputs.clear();
    QQuickItem* refresh = stage.control("Refresh");
    refresh->forceActiveFocus(Qt::TabFocusReason);
    stage.press(Qt::Key_Space);
    EXPECT_EQ(stage.engine().osFacts->front().value, "unknown");
    EXPECT_FALSE(running());
}

TEST_F(Keyboard, SpaceOnASwitchTogglesTheSwitch) {
    stage.writeOrganisation();
    stage.open();
    stage.world.filePanel.choice = stage.world.write("a.txt", "text");
    stage.engine().addEvidence();
    stage.settle();
    stage.world.model.answer(R"({"criteria":["CC3-risk"],"summary":"s"})");
    stage.settle();
    stage.control("CC3-risk")->forceActiveFocus(Qt::TabFocusReason);
    stage.press(Qt::Key_Space);
    EXPECT_FALSE(stage.control("CC3-risk")->property("checked").toBool());
    EXPECT_FALSE(running());
}

TEST_F(Keyboard, SpaceStillTogglesAfterAFocusedControlWentAway) {
    stage.open();
    stage.engine().pause();
    stage.settle();
    stage.control("Bond — approve & seal")->forceActiveFocus(Qt::TabFocusReason);
    stage.press(Qt::Key_Space);
    ASSERT_EQ(stage.named("pendingSection"), nullptr);
    stage.press(Qt::Key_Space);
    EXPECT_TRUE(running());
}

TEST_F(Keyboard, TabReachesEveryControlAndComesBack) {
    stage.writeOrganisation();
    stage.open();
    stage.verify("Owner");
    stage.world.filePanel.choice = stage.world.write("a.txt", "text");
    stage.engine().addEvidence();
    stage.settle();
    stage.world.model.answer(R"({"criteria":["CC3-risk"],"summary":"s"})");
    stage.engine().generatePolicy("CC7-incidents");
    stage.settle();
    stage.world.model.answer("The policy");
    stage.settle();

    QSet<QQuickItem*> reached;
    for (int i = 0; i < 60; ++i) {
        stage.press(Qt::Key_Tab);
        QQuickItem* item = stage.window().activeFocusItem();
        if (reached.contains(item)) break;
        reached.insert(item);
        const QRectF box = item->mapRectToScene(item->boundingRect());
        EXPECT_TRUE(QRectF(QPointF(), stage.window().size()).intersects(box))
            << "what has the focus is in view";
    }
    for (QQuickItem* item : stage.items()) {
        if (item->objectName() == "nextActionReminder") continue; // shows only out of sight of it
        if (!item->inherits("QQuickAbstractButton") && !item->inherits("QQuickTextField")) continue;
        if (!item->isEnabled()) continue;
        EXPECT_TRUE(reached.contains(item)) << item->property("text").toString().toStdString();
    }
}

TEST_F(Keyboard, EveryControlHasARoleAndAName) {
    stage.writeOrganisation();
    stage.open();
    stage.verify("Engineer");
    int controls = 0;
    for (QQuickItem* item : stage.items()) {
        const bool control = item->inherits("QQuickAbstractButton") ||
                             item->inherits("QQuickTextField") || item->inherits("QQuickComboBox");
        if (!control) continue;
        ++controls;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(item);
        ASSERT_NE(accessible, nullptr);
        EXPECT_NE(accessible->text(QAccessible::Name), "") << item->metaObject()->className();
        EXPECT_NE(accessible->role(), QAccessible::NoRole);
        EXPECT_NE(accessible->role(), QAccessible::Client) << item->metaObject()->className();
    }
    EXPECT_GE(controls, 7);
}

} // namespace
} // namespace kelvo::test
