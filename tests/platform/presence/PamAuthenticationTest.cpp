#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QTimer>
#include <tuple>

#include "PresenceDesk.h"

namespace kelvo::test {
namespace {

using testing::HasSubstr;

const std::string reason = "Close gap CC6.1 <b>bold</b> & seal";

class PamAuthenticationTest : public testing::Test {
protected:
    PamAuthenticationTest() {
        folder_.service("desk", "auth required @matrix\naccount required @matrix\n");
    }
    void TearDown() override {
        EXPECT_TRUE(person_.finished()) << "the person could not do all that the test wanted";
        EXPECT_EQ(Person::prompt(), nullptr) << "a prompt stayed open";
    }

    PamFolder folder_;
    Person person_;
};

TEST_F(PamAuthenticationTest, IsTrueForTheRightPassword) {
    TestAuthentication authentication(folder_, "desk");
    EXPECT_EQ(authentication.unavailableReason(), std::nullopt);
    person_.when(isAsking, [](QQuickWindow& prompt) {
        EXPECT_EQ(textOf(prompt, "reason").toStdString(), reason);
        EXPECT_EQ(textOf(prompt, "account"), "Account ada");
        EXPECT_EQ(prompt.modality(), Qt::ApplicationModal);
        type(prompt, "correct horse");
        click(prompt, "confirm");
    });
    EXPECT_TRUE(authentication.evaluate(reason));
    person_.enters("correct horse");
    EXPECT_TRUE(authentication.evaluate(reason));
}

TEST_F(PamAuthenticationTest, IsFalseForEveryOtherAnswer) {
    const auto enter = [](const char* text) {
        return [text](QQuickWindow& prompt) {
            type(prompt, text);
            press(prompt, Qt::Key_Return);
        };
    };
    const auto keys = [](Qt::Key first, Qt::Key second) {
        return [=](QQuickWindow& prompt) {
            press(prompt, first);
            press(prompt, second);
        };
    };
    const auto cancel = [](QQuickWindow& prompt) {
        type(prompt, "correct horse");
        press(prompt, Qt::Key_Escape);
    };
    const std::tuple<const char*, const char*, Person::Action> table[] = {
        {"wrong", "ada", enter("wrong")},
        {"account not let in", "bob", enter("correct horse")},
        {"cancel button", "ada", [](QQuickWindow& prompt) { click(prompt, "cancel"); }},
        {"right, but cancelled", "ada", cancel},
        {"Escape on a button", "ada", keys(Qt::Key_Tab, Qt::Key_Escape)},
        {"cancel by the keyboard", "ada", keys(Qt::Key_Tab, Qt::Key_Space)},
        {"window closed", "ada", [](QQuickWindow& prompt) { prompt.close(); }},
    };
    for (const auto& [what, user, act] : table) {
        SCOPED_TRACE(what);
        TestAuthentication authentication(folder_, "desk", user);
        person_.when(isAsking, act);
        EXPECT_FALSE(authentication.evaluate(reason));
        EXPECT_EQ(Person::prompt(), nullptr);
    }
}

TEST_F(PamAuthenticationTest, IsFalseWhenTheProgramQuitsMeanwhile) {
    TestAuthentication authentication(folder_, "desk");
    bool answer = true;
    QTimer::singleShot(0, [&] { answer = authentication.evaluate(reason); });
    person_.when(isAsking, [](QQuickWindow&) { QGuiApplication::quit(); });
    QGuiApplication::exec();
    EXPECT_FALSE(answer);
}

TEST_F(PamAuthenticationTest, ShowsNoPromptWhereNobodyCanBeAsked) {
    TestAuthentication missing(folder_, "missing");
    EXPECT_THAT(missing.unavailableReason().value_or(""), HasSubstr("no PAM service"));
    EXPECT_FALSE(missing.evaluate(reason));

    TestAuthentication unknown(folder_, "desk", "");
    EXPECT_THAT(unknown.unavailableReason().value_or(""), HasSubstr("does not know the account"));
    EXPECT_FALSE(unknown.evaluate(reason));
}

TEST_F(PamAuthenticationTest, ShowsWhatModulesSayAsPlainText) {
    const auto text = folder_.file("text", "<b>Touch</b> the &lt;reader&gt;\n");
    folder_.service("told", "auth optional pam_echo.so file=" + text.string() +
                                "\nauth required @matrix\naccount required @matrix\n");
    TestAuthentication authentication(folder_, "told");
    person_.when(isAsking, [](QQuickWindow& prompt) {
        EXPECT_EQ(textOf(prompt, "information"), "<b>Touch</b> the &lt;reader&gt;");
        for (const char* name : {"information", "errors", "reason", "question", "account"}) {
            constexpr int plainText = 0; // Text.PlainText
            EXPECT_EQ(prompt.findChild<QQuickItem*>(name)->property("textFormat").toInt(),
                      plainText)
                << name;
        }
        type(prompt, "correct horse");
        press(prompt, Qt::Key_Return);
    });
    EXPECT_TRUE(authentication.evaluate(reason));
}

TEST_F(PamAuthenticationTest, KeepsTheEventLoopRunningWhileItAsks) {
    TestAuthentication authentication(folder_, "desk");
    int ticks = 0;
    QTimer timer;
    timer.callOnTimeout([&ticks] { ++ticks; });
    timer.start(1);
    int frames = 0;
    person_
        .when(isAsking,
              [&frames](QQuickWindow& prompt) {
                  QObject::connect(&prompt, &QQuickWindow::frameSwapped, [&frames] { ++frames; });
                  type(prompt, "x");
              })
        .when(
            [&](QQuickWindow& prompt) {
                prompt.update();
                return ticks >= 50 && frames >= 3;
            },
            [](QQuickWindow& prompt) { press(prompt, Qt::Key_Escape); });
    EXPECT_FALSE(authentication.evaluate(reason));
    EXPECT_GE(ticks, 50);
}

TEST_F(PamAuthenticationTest, ASecondQuestionIsRefusedWhileOneIsOpen) {
    TestAuthentication authentication(folder_, "desk");
    person_.when(isAsking, [&](QQuickWindow&) { EXPECT_FALSE(authentication.evaluate("second")); });
    person_.enters("correct horse");
    EXPECT_TRUE(authentication.evaluate(reason));
}

TEST_F(PamAuthenticationTest, CancellingDoesNotWaitForAStackThatIsBusy) {
    const auto gate = folder_.file("busy", "");
    const auto script =
        folder_.file("wait.sh", "while [ -e \"" + gate.string() + "\" ]; do sleep 0.02; done\n");
    folder_.service("slow", "auth required pam_exec.so quiet /bin/sh " + script.string() +
                                "\nauth required @matrix\naccount required @matrix\n");
    TestAuthentication authentication(folder_, "slow");
    person_.when(isOpen, [](QQuickWindow& prompt) { press(prompt, Qt::Key_Escape); });
    EXPECT_FALSE(authentication.evaluate(reason));
    EXPECT_TRUE(std::filesystem::exists(gate)) << "it waited for the stack";

    // The next prompt is open at once, and asks when the stack before has ended.
    person_.when(isOpen, [&](QQuickWindow& prompt) {
        EXPECT_FALSE(isAsking(prompt));
        std::filesystem::remove(gate);
    });
    person_.enters("correct horse");
    EXPECT_TRUE(authentication.evaluate(reason));
}

TEST_F(PamAuthenticationTest, StopsAskingAfterThreeFastFailuresButNotForCancels) {
    TestAuthentication authentication(folder_, "desk");
    for (int i = 0; i < 5; ++i) {
        person_.when(isAsking, [](QQuickWindow& prompt) { press(prompt, Qt::Key_Escape); });
        EXPECT_FALSE(authentication.evaluate(reason));
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(authentication.unavailableReason(), std::nullopt);
        person_.enters("wrong");
        EXPECT_FALSE(authentication.evaluate(reason));
    }
    EXPECT_THAT(authentication.unavailableReason().value_or(""),
                HasSubstr("too many failed attempts"));
    EXPECT_FALSE(authentication.evaluate(reason));
}

TEST(SystemAuthentication, TakesMisleadingVariablesOutOfTheEnvironment) {
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/tmp/mine", 1);
    ::setenv("KRB5_CONFIG", "/tmp/mine", 1);
    const PamAuthentication authentication;
    EXPECT_EQ(::getenv("DBUS_SYSTEM_BUS_ADDRESS"), nullptr);
    EXPECT_EQ(::getenv("KRB5_CONFIG"), nullptr);
}

} // namespace
} // namespace kelvo::test
