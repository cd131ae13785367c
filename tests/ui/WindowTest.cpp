// The window: the scenes of tests/data/window, and what holds for all of it.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleInterface>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QScreen>
#include <QSet>
#include <algorithm>
#include <cmath>

#include "Stage.h"

namespace kelvo::test {
namespace {

const int told = tellScenes<Stage>("Scenes", KELVO_DATA "/window") +
                 tellScenes<Stage>("FirstDay", KELVO_DATA "/shows/day") +
                 tellScenes<Stage>("Pictures", KELVO_DATA "/shows/pictures");

bool isControl(const QQuickItem* item) {
    return item->inherits("QQuickAbstractButton") || item->inherits("QQuickTextField") ||
           item->inherits("QQuickComboBox");
}

TEST(Keyboard, ReachesEveryControlInViewAndComesBack) {
    Stage stage;
    for (const char* line : {"organisation", "open", "owner", "write a.txt is text", "choose a.txt",
                             "addEvidence", R"(answer {"criteria":["CC3-risk"],"summary":"s"})",
                             "generate CC7-incidents", "answer The policy"})
        stage.act(line);
    QSet<QQuickItem*> reached;
    for (int i = 0; i < 60; ++i) {
        stage.press("Tab");
        QQuickItem* item = stage.window().activeFocusItem();
        if (reached.contains(item)) break;
        reached.insert(item);
        const QRectF box = item->mapRectToScene(item->boundingRect());
        EXPECT_TRUE(QRectF(QPointF(), stage.window().size()).contains(box.center()))
            << "what has the focus is in view";
    }
    for (QQuickItem* item : stage.items()) {
        if (item->objectName() == "nextActionReminder") continue; // shows only out of sight of it
        if (!isControl(item) || !item->isEnabled()) continue;
        EXPECT_TRUE(reached.contains(item)) << item->property("text").toString().toStdString();
        const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(item);
        ASSERT_NE(accessible, nullptr);
        EXPECT_NE(accessible->text(QAccessible::Name), "") << item->metaObject()->className();
        EXPECT_NE(accessible->role(), QAccessible::NoRole);
        EXPECT_NE(accessible->role(), QAccessible::Client) << item->metaObject()->className();
    }
    EXPECT_GE(reached.size(), 12);
}

TEST(Work, ThatNoModelDoesIsShownAndCannotBeCancelled) {
    Stage stage;
    for (const char* line : {"mesh [[\"A\"]]", "open", "write big.bin is x",
                             "stretch big.bin 83886080", "choose big.bin"})
        stage.act(line);
    int passes = 0;
    stage.world.eventLoop.duringPass = [&] {
        stage.settle();
        EXPECT_TRUE(stage.shows("Reading big.bin"));
        EXPECT_EQ(stage.find("cancelModelWork"), nullptr);
        ++passes;
    };
    stage.act("closeGap A");
    EXPECT_EQ(passes, 5);
    EXPECT_FALSE(stage.shows("Reading big.bin"));
}

TEST(Size, OpensWithinTheScreenAndNothingReachesOutOfItsPaneAtTheSmallest) {
    Stage stage;
    stage.act("organisation");
    stage.act("open 860x560");
    EngineView view(stage.engine());
    ProofView proof(stage.engine(), stage.programs);
    AuditView audit(stage.world.engine(), stage.programs);
    const MainWindow another(view, proof, stage.begin(), audit);
    const QSize screen = another.window()->screen()->availableSize();
    ASSERT_LT(screen.height(), 900) << "else nothing is shown here";
    EXPECT_LT(another.window()->height(), screen.height());
    EXPECT_GE(another.window()->height(), 560);
    EXPECT_GE(another.window()->width(), 860);
    for (const char* role : {"", "Owner", "Engineer", "Auditor"}) {
        if (*role != '\0') stage.act(std::string("verify ") + role);
        for (QQuickItem* item : stage.items()) {
            if (!item->inherits("QQuickAbstractButton") && !item->inherits("QQuickText")) continue;
            const QRectF box = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
            EXPECT_GE(box.left(), -1) << item->property("text").toString().toStdString();
            EXPECT_LE(box.right(), 861) << item->property("text").toString().toStdString();
        }
    }
}

/// Relative luminance and contrast (WCAG 2.1, section 1.4.3).
double luminance(const QColor& colour) {
    const auto linear = [](float part) {
        return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

TEST(Colours, OfTextContrastWithEverySurfaceTheyStandOn) {
    QQmlEngine engine;
    engine.addImportPath("qrc:/qt/qml");
    QQmlComponent component(&engine);
    component.setData("import QtQml; import Kelvo; QtObject { property var theme: Theme }", {});
    const std::unique_ptr<QObject> holder(component.create());
    ASSERT_TRUE(holder) << component.errorString().toStdString();
    auto* theme = holder->property("theme").value<QObject*>();
    for (const bool dark : {false, true}) {
        theme->setProperty("dark", dark);
        for (const char* ink : {"text", "secondary", "tertiary", "accent", "met", "open"}) {
            for (const char* ground : {"window", "card", "well"}) {
                const double a = luminance(theme->property(ink).value<QColor>());
                const double b = luminance(theme->property(ground).value<QColor>());
                const double contrast = (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
                EXPECT_GE(contrast, 4.5) << ink << " on " << ground << (dark ? ", dark" : "");
            }
        }
    }
}

} // namespace
} // namespace kelvo::test
