#include <gmock/gmock.h>

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

#include "Desk.h"

namespace kelvo::test {
namespace {

const QString applicationInterface = QStringLiteral("org.freedesktop.Application");

/// The shipped program, started by a bus that finds its service file, in a home of its own.
class ApplicationTest : public testing::Test {
protected:
    ApplicationTest() {
        QDir(home_.path()).mkpath("bondgraphs/kelvo-soc2-app");
        QDir(home_.path()).mkpath("bondgraphs/bondgraph/outputs");
        QDir(home_.path()).mkpath("data/dbus-1/services");
        QFile packaged(KELVO_SERVICE_FILE);
        QFile installed(home_.filePath("data/dbus-1/services/org.kelvo.Soc2.service"));
        EXPECT_TRUE(packaged.open(QIODevice::ReadOnly) && installed.open(QIODevice::WriteOnly));
        const QString folder = QFileInfo(KELVO_PROGRAM).absolutePath();
        installed.write(QString::fromUtf8(packaged.readAll())
                            .replace("@CMAKE_INSTALL_FULL_BINDIR@", folder)
                            .toUtf8());
    }
    void TearDown() override {
        const QDBusReply<uint> process = (*caller_).interface()->servicePid(application);
        if (process.isValid()) ::kill(pid_t(process.value()), SIGKILL);
    }

    QProcessEnvironment environment() const {
        QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
        own.insert("HOME", home_.path());
        own.insert("XDG_DATA_HOME", home_.filePath("data"));
        own.insert("XDG_RUNTIME_DIR", home_.path());
        own.insert("QT_QPA_PLATFORM", "offscreen");
        own.insert("QT_QUICK_BACKEND", "software");
        own.insert("QSG_INFO", "1"); // a line to standard error when a first window is drawn
        return own;
    }
    QString answer(const QDBusMessage& call) { return answered((*caller_).asyncCall(call)); }
    Ended shortcut(const QStringList& arguments) {
        return Program(KELVO_SHORTCUT, arguments, bus_.address()).end();
    }
    /// The event log up to now.
    QString log() const {
        QString text;
        for (const QFileInfo& file :
             QDir(home_.filePath("bondgraphs/kelvo-soc2-app")).entryInfoList(QDir::Files)) {
            QFile lines(file.filePath());
            if (lines.open(QIODevice::ReadOnly)) text += QString::fromUtf8(lines.readAll());
        }
        return text;
    }
    bool logged(const QString& what) {
        return QTest::qWaitFor([&] { return log().contains(what); }, 30'000);
    }
    bool windowShown() {
        complaints_ += bus_.complaints();
        return complaints_.contains("scenegraph");
    }

    QTemporaryDir home_;
    PrivateBus bus_{environment()};
    BusConnection caller_{bus_.address(), "user"};
    QString complaints_;
};

TEST_F(ApplicationTest, IsStartedByTheBusAndShowsItsWindowOnlyOnceItIsWanted) {
    EXPECT_EQ(answer(methodCall("/org/kelvo/Soc2/Intents", IntentBus::interface, "Phrases")),
              "Ask Kelvo SOC2");
    QTest::qWait(500);
    EXPECT_FALSE(windowShown()) << complaints_.toStdString();
    const Ended adopted = shortcut({"adopt", "CC6"});
    EXPECT_EQ(adopted.code, 0) << adopted.errors.toStdString();
    EXPECT_TRUE(adopted.output.startsWith("Setting up Logical & Physical Access"));
    EXPECT_TRUE(logged("\"adopt_compose\""));
    EXPECT_TRUE(QTest::qWaitFor([this] { return windowShown(); }, 20'000))
        << complaints_.toStdString();
}

TEST_F(ApplicationTest, RunsTheActionsOfItsDesktopEntry) {
    const auto action = [](const QString& name, const QVariantList& parameters) {
        return methodCall(applicationPath, applicationInterface, "ActivateAction",
                          {name, QVariant(parameters), QVariantMap()});
    };
    EXPECT_EQ(answer(action("run", {})), "");
    EXPECT_TRUE(logged("\"play\""));
    EXPECT_EQ(answer(action("adopt", {"CC6"})), "");
    EXPECT_TRUE(logged("\"adopt_compose\""));
    for (const auto& [name, parameters] :
         {std::pair{"seal", QVariantList{}}, std::pair{"adopt", QVariantList{6}},
          std::pair{"adopt", QVariantList{"CC6", "CC7"}}, std::pair{"run", QVariantList{"now"}}})
        EXPECT_TRUE(
            answer(action(name, parameters)).startsWith("org.freedesktop.DBus.Error.InvalidArgs: "))
            << name;
}

TEST_F(ApplicationTest, SealsNothingThatOnlyACallerApproved) {
    ASSERT_EQ(shortcut({"run"}).code, 0);
    ASSERT_TRUE(logged("\"pause\"")) << "the start-up model pauses itself";
    Program approve(KELVO_SHORTCUT, {"approve"}, bus_.address());
    ASSERT_TRUE(logged("\"hipr_request\""));
    Program adopt(KELVO_SHORTCUT, {"adopt", "CC6"}, bus_.address());
    const QString before = log();
    EXPECT_EQ(Program(KELVO_HOSTILE_CALLER, {"1000"}, bus_.address()).end().output,
              "1000 calls, 1000 refused\n");
    EXPECT_EQ(answer(methodCall("/org/kelvo/Soc2/Intents", IntentBus::interface, "Phrases")),
              "Ask Kelvo SOC2");
    EXPECT_TRUE(approve.running()) << "the prompt waits for the person";
    EXPECT_TRUE(adopt.running()) << "and everything else for the prompt";
    EXPECT_EQ(log(), before);
    EXPECT_TRUE(
        QDir(home_.filePath("bondgraphs/bondgraph/outputs")).entryList(QDir::Files).isEmpty());
}

} // namespace
} // namespace kelvo::test
