#include "platform/presence/PresencePrompt.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QQmlEngine>
#include <QTest>

#include "PresenceDesk.h"

namespace kelvo::test {
namespace {

class PresencePromptTest : public testing::Test {
protected:
    QQuickWindow& open() {
        EXPECT_TRUE(prompt_.show(engine_));
        QQuickWindow* window = Person::prompt();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window));
        return *window;
    }
    static QObject* input(QQuickWindow& window) { return window.findChild<QObject*>("input"); }

    // What the window shows comes from resources that the authentication registers.
    PamAuthentication owner_;
    QQmlEngine engine_;
    std::vector<std::string> answers_;
    int dismissals_ = 0;
    PresencePrompt prompt_{"BOND — collapse PENDING→FINAL, seal totem to chain", "ada",
                           [this](SecretText text) { answers_.emplace_back(text.view()); },
                           [this] { ++dismissals_; }};
};

TEST_F(PresencePromptTest, TakesNoAnswerBeforeItIsAsked) {
    QQuickWindow& window = open();
    EXPECT_FALSE(isAsking(window));
    type(window, "early");
    press(window, Qt::Key_Return);
    click(window, "confirm");
    EXPECT_TRUE(answers_.empty());
    prompt_.ask("Password:", false);
    ASSERT_TRUE(isAsking(window));
    EXPECT_EQ(textOf(window, "input"), "");
    EXPECT_EQ(textOf(window, "question"), "Password:");
}

TEST_F(PresencePromptTest, HidesASecretAndForgetsItOnceItIsGiven) {
    QQuickWindow& window = open();
    prompt_.ask("Password:", false);
    type(window, "secret");
    EXPECT_FALSE(
        input(window)->property("displayText").toString().contains(QRegularExpression("[a-z]")));
    press(window, Qt::Key_Return);
    EXPECT_EQ(answers_, std::vector<std::string>{"secret"});
    EXPECT_EQ(textOf(window, "input"), "");
    press(window, Qt::Key_Return);
    EXPECT_EQ(answers_.size(), 1U) << "answered twice";

    prompt_.ask("One-time code:", true);
    type(window, "123");
    EXPECT_EQ(input(window)->property("displayText"), "123");
    press(window, Qt::Key_Return);
    EXPECT_EQ(answers_.back(), "123");

    prompt_.ask("Password:", false);
    input(window)->setProperty("text", QString::fromUtf8("pässwörd✓"));
    click(window, "confirm");
    EXPECT_EQ(answers_.back(), "pässwörd✓");
}

TEST_F(PresencePromptTest, KeepsARefusalReadableUntilItIsClosed) {
    QQuickWindow& window = open();
    prompt_.tell("Your account has <i>expired</i>.", true);
    prompt_.refuse();
    EXPECT_EQ(textOf(window, "errors"), "Your account has <i>expired</i>.");
    EXPECT_EQ(dismissals_, 0);
    QCoreApplication::processEvents();
    click(window, "cancel");
    press(window, Qt::Key_Escape);
    EXPECT_EQ(dismissals_, 1);
}

TEST_F(PresencePromptTest, LooksRightInLightAndDark) {
    QDir().mkpath(KELVO_SCREENSHOTS);
    const QPalette before = QGuiApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Window, QColor(0x20, 0x22, 0x24));
    QPalette light = before;
    light.setColor(QPalette::Window, QColor(0xf4, 0xf4, 0xf2));
    QQuickWindow& window = open();
    prompt_.tell("Place your right index finger on the reader, or enter your password.", false);
    prompt_.ask("Password:", false);
    type(window, "correct horse");
    const auto grab = [&](const QPalette& palette, const char* name) {
        QGuiApplication::setPalette(palette);
        QTest::qWait(50);
        const QImage image = window.grabWindow();
        EXPECT_TRUE(image.save(QString(KELVO_SCREENSHOTS "/%1.png").arg(name)));
        return image.pixelColor(4, 4).lightness();
    };
    EXPECT_GT(grab(light, "presence-light"), 200);
    EXPECT_LT(grab(dark, "presence-dark"), 80);
    prompt_.tell("Your account has expired; please contact your system administrator.", true);
    prompt_.refuse();
    grab(light, "presence-refused");
    QGuiApplication::setPalette(before);
}

} // namespace
} // namespace kelvo::test
