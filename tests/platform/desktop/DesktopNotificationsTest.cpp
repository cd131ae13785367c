#include "platform/desktop/DesktopNotifications.h"

#include "support/PrivateBus.h"

#include <gmock/gmock.h>

#include <QDBusConnectionInterface>
#include <QFile>
#include <QTest>

namespace kelvo {
namespace {

struct Service {
    const char* name;
    const char* program;
    QStringList arguments;
    const char* escaped; ///< the body as the service is given it
};

void PrintTo(const Service& service, std::ostream* out) {
    *out << service.name;
}

/// A notification service of its own kind on a bus of the test's own.
class NotificationServiceTest : public testing::TestWithParam<Service> {
protected:
    void SetUp() override {
        if (!QFile::exists(GetParam().program)) {
            GTEST_SKIP() << "NOT TESTED: " << GetParam().program << " is not installed";
        }
        ASSERT_FALSE(bus_.address().isEmpty());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", bus_.address());
        if (QString(GetParam().name) == "dunst") {
            ASSERT_NO_FATAL_FAILURE(startDisplay());
            environment.insert("DISPLAY", ":" + display_.readLine().trimmed());
        }
        service_.setProcessEnvironment(environment);
        service_.setProcessChannelMode(QProcess::MergedChannels);
        // Unbuffered, for its output is read while it runs.
        service_.start("stdbuf", QStringList{"-o0", GetParam().program} + GetParam().arguments);
        ASSERT_TRUE(QTest::qWaitFor([this] { return registered(); }, 20'000))
            << service_.readAll().toStdString();
    }
    void TearDown() override {
        for (QProcess* process : {&service_, &display_}) {
            process->terminate();
            if (!process->waitForFinished(5000)) process->kill();
            process->waitForFinished();
        }
    }
    /// The X server chooses a number that no other one holds, and says it on a line of its own.
    void startDisplay() {
        display_.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
        ASSERT_TRUE(QTest::qWaitFor([this] { return display_.canReadLine(); }, 20'000))
            << display_.errorString().toStdString()
            << display_.readAllStandardError().toStdString();
    }
    bool registered() {
        return (*connection_).interface()->isServiceRegistered("org.freedesktop.Notifications");
    }

    test::PrivateBus bus_;
    test::BusConnection connection_{bus_.address(), "notifications"};
    QProcess display_;
    QProcess service_;
};

TEST_P(NotificationServiceTest, ShowsTheNotification) {
    DesktopNotifications notifications("Kelvo", "org.kelvo.SOC2Engine", *connection_);
    EXPECT_TRUE(notifications.hasApplicationIdentity());
    bool lost = false;
    notifications.post({"8F14E45F-CEEA-467F-A7C2-2B9B3A1C0D55", "⚠ Risk needs your review",
                        "Press <b> & approve."},
                       [&lost] { lost = true; });
    QByteArray output;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            output += service_.readAll();
            return output.contains("approve.");
        },
        20'000))
        << output.toStdString();
    EXPECT_THAT(output.toStdString(), testing::HasSubstr("Risk needs your review"));
    EXPECT_THAT(output.toStdString(), testing::HasSubstr(GetParam().escaped));
    EXPECT_FALSE(lost);
}

Service mock(const char* name, const char* capabilities, const char* escaped) {
    return {name,
            "/usr/bin/python3",
            {"-u", "-m", "dbusmock", "--template", "notification_daemon", "-p",
             QString("{\"capabilities\": \"%1\"}").arg(capabilities)},
            escaped};
}

INSTANTIATE_TEST_SUITE_P(
    Real, NotificationServiceTest,
    testing::Values(mock("mock", "body body-markup", "Press &lt;b&gt; &amp; approve."),
                    mock("plainTextMock", "body", "Press <b> & approve."),
                    Service{
                        "dunst", "/usr/bin/dunst", {"-print"}, "Press &lt;b&gt; &amp; approve."}),
    [](const auto& chosen) { return std::string(chosen.param.name); });

TEST(DesktopNotifications, TellLaterThatNobodyTookThem) {
    const test::PrivateBus bus;
    test::BusConnection empty(bus.address(), "empty");
    test::BusConnection none("unix:path=/nowhere", "none");
    for (test::BusConnection* connection : {&empty, &none}) {
        DesktopNotifications notifications("Kelvo", "org.kelvo.SOC2Engine", **connection);
        int lost = 0;
        notifications.post({"id", "title", "body"}, [&lost] { ++lost; });
        EXPECT_EQ(lost, 0) << "told from inside the call";
        EXPECT_TRUE(QTest::qWaitFor([&lost] { return lost > 0; }, 20'000));
        QCoreApplication::processEvents();
        EXPECT_EQ(lost, 1);
    }
}

TEST(DesktopNotifications, AreConsoleLinesWithoutADesktopFile) {
    DesktopNotifications notifications("Kelvo", "", QDBusConnection("no such connection"));
    EXPECT_FALSE(notifications.hasApplicationIdentity());
    testing::internal::CaptureStderr();
    notifications.console("[notify] a %s — b");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[notify] a %s — b\n");
}

} // namespace
} // namespace kelvo
