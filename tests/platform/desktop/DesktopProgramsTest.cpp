// A portal on a bus of the test's own, an opener first in the path, and a real SSH agent.

#include "platform/desktop/DesktopPrograms.h"

#include "base/Files.h"
#include "support/PrivateBus.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QTest>

namespace kelvo {
namespace {

namespace fs = std::filesystem;

class DesktopProgramsTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(bus_.address().isEmpty());
        path_ = qgetenv("PATH");
        writeScript("xdg-open",
                    "#!/bin/sh\nprintf 'opener %s\\n' \"$1\" >> " + told().string() + "\n");
        qputenv("PATH", QByteArray(folder_.path().c_str()) + ":" + path_);
    }
    void TearDown() override {
        qputenv("PATH", path_);
        for (QProcess* process : {&portal_, &agent_}) {
            process->terminate();
            if (!process->waitForFinished(5000)) process->kill();
            process->waitForFinished();
        }
    }

    fs::path told() const { return folder_.path() / "told"; }
    std::string whatWasTold() const { return readFile(told()).value_or(""); }

    void writeScript(const char* name, const std::string& text) {
        ASSERT_TRUE(writeFileAtomically(folder_.path() / name, text));
        fs::permissions(folder_.path() / name, fs::perms::owner_all);
    }

    /// A portal with these methods, each of which tells what it was given.
    void startPortal() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", bus_.address());
        portal_.setProcessEnvironment(environment);
        portal_.start("/usr/bin/python3", {"-m", "dbusmock", "--session", service, object,
                                           "org.freedesktop.portal.OpenURI"});
        const auto there = [this] {
            return (**connection_).interface()->isServiceRegistered(service);
        };
        ASSERT_TRUE(QTest::qWaitFor(there, 20'000)) << portal_.readAll().toStdString();
        const std::string read =
            "import os; fd = args[%1].take(); text = os.read(fd, 99).decode(); "
            "open('" +
            told().string() +
            "', 'a').write('%2 ' + text + %3 + '\\n'); "
            "ret = dbus.ObjectPath('/request')";
        const QString form = QString::fromStdString(read);
        add("org.freedesktop.portal.OpenURI", "OpenFile", "sha{sv}",
            form.arg("1", "file", "' ' + str(bool(args[2]['writable']))"));
        add("org.freedesktop.portal.Print", "Print", "ssha{sv}",
            form.arg("2", "print", "' as ' + args[1]"));
        add("org.freedesktop.portal.OpenURI", "OpenURI", "ssa{sv}",
            QString::fromStdString("open('" + told().string() +
                                   "', 'a').write('address ' + args[1] + '\\n'); "
                                   "ret = dbus.ObjectPath('/request')"));
    }
    void add(const QString& interface, const QString& method, const QString& signature,
             const QString& code) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            service, object, "org.freedesktop.DBus.Mock", "AddMethod");
        call.setArguments({interface, method, signature, "o", code});
        const QDBusMessage reply = (**connection_).call(call);
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    }

    /// An agent that holds one key, whose file is gone.
    void startAgent() {
        const QString socket = QString::fromStdString((folder_.path() / "agent").string());
        agent_.start("ssh-agent", {"-D", "-a", socket});
        ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(socket); }, 20'000));
        qputenv("SSH_AUTH_SOCK", socket.toUtf8());
        const QString key = QString::fromStdString((folder_.path() / "key").string());
        ASSERT_EQ(QProcess::execute("ssh-keygen", {"-q", "-t", "ed25519", "-N", "", "-C",
                                                   "ada at work", "-f", key}),
                  0);
        ASSERT_EQ(QProcess::execute("ssh-add", {"-q", key}), 0);
        QFile::remove(key);
    }

    static inline const QString service = "org.freedesktop.portal.Desktop";
    static inline const QString object = "/org/freedesktop/portal/desktop";
    test::TemporaryDirectory folder_;
    test::PrivateBus bus_;
    std::optional<test::BusConnection> connection_{std::in_place, bus_.address(), "programs"};
    QProcess portal_;
    QProcess agent_;
    QByteArray path_;
};

TEST_F(DesktopProgramsTest, ThePortalIsGivenTheOpenFileAndTheAddress) {
    ASSERT_NO_FATAL_FAILURE(startPortal());
    const fs::path file = folder_.path() / "access review.txt";
    ASSERT_TRUE(writeFileAtomically(file, "two leavers"));
    DesktopPrograms programs(**connection_);
    EXPECT_TRUE(programs.open(file));
    EXPECT_TRUE(programs.print("Checkpoint", file));
    EXPECT_TRUE(programs.compose("mailto:?subject=A%20checkpoint"));
    EXPECT_EQ(whatWasTold(), "file two leavers False\n"
                             "print two leavers as Checkpoint\n"
                             "address mailto:?subject=A%20checkpoint\n");
}

TEST_F(DesktopProgramsTest, WithoutAPortalTheOpenerIsStarted) {
    DesktopPrograms programs(**connection_);
    const fs::path file = folder_.path() / "a.pdf";
    EXPECT_TRUE(programs.open(file));
    ASSERT_TRUE(QTest::qWaitFor([this] { return whatWasTold().ends_with("\n"); }, 20'000));
    EXPECT_EQ(whatWasTold(), "opener " + file.string() + "\n");
    qputenv("PATH", "/nowhere");
    EXPECT_FALSE(programs.compose("mailto:?subject=x"));
}

TEST_F(DesktopProgramsTest, TheAgentSignsWhatOpensshVerifies) {
    qunsetenv("SSH_AUTH_SOCK");
    DesktopPrograms programs(**connection_);
    EXPECT_TRUE(programs.signingKeys().empty());
    ASSERT_NO_FATAL_FAILURE(startAgent());
    const auto keys = programs.signingKeys();
    ASSERT_EQ(keys.size(), 1U);
    EXPECT_EQ(keys[0].comment, "ada at work");

    const std::string text = "Kelvo seal log checkpoint 1\n";
    std::optional<std::optional<std::string>> signature;
    const auto take = [&](std::optional<std::string> got) { signature = std::move(got); };
    const auto answered = [&] { return signature.has_value(); };
    programs.sign(keys[0], "checkpoint@kelvo-soc2", text, take);
    EXPECT_FALSE(answered()) << "answered from inside the call";
    ASSERT_TRUE(QTest::qWaitFor(answered, 60'000));
    ASSERT_TRUE(signature->has_value());

    const fs::path& folder = folder_.path();
    ASSERT_TRUE(writeFileAtomically(folder / "c.sig", **signature));
    ASSERT_TRUE(writeFileAtomically(folder / "allowed", "owner " + keys[0].line + "\n"));
    for (const bool altered : {false, true}) {
        QProcess verifier;
        verifier.start("ssh-keygen",
                       {"-Y", "verify", "-f", QString::fromStdString((folder / "allowed").string()),
                        "-I", "owner", "-n", "checkpoint@kelvo-soc2", "-s",
                        QString::fromStdString((folder / "c.sig").string())});
        verifier.write((altered ? text + " " : text).c_str());
        verifier.closeWriteChannel();
        ASSERT_TRUE(verifier.waitForFinished());
        EXPECT_EQ(verifier.exitCode() == 0, !altered) << verifier.readAll().toStdString();
    }

    signature.reset();
    agent_.terminate();
    agent_.waitForFinished();
    programs.sign(keys[0], "checkpoint@kelvo-soc2", text, take);
    ASSERT_TRUE(QTest::qWaitFor(answered, 60'000));
    EXPECT_FALSE(signature->has_value());
    EXPECT_TRUE(programs.signingKeys().empty());
}

} // namespace
} // namespace kelvo
