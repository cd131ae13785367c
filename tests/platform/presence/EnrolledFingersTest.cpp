#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusObjectPath>
#include <QThread>

#include "PresenceDesk.h"

namespace kelvo {
namespace {

/// fprintd's two objects as far as they are asked, answering in a thread of their own.
class Manager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "net.reactivated.Fprint.Manager")
public slots:
    QList<QDBusObjectPath> GetDevices() const {
        return {QDBusObjectPath("/reader/0"), QDBusObjectPath("/reader/1")};
    }
};

class Reader : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "net.reactivated.Fprint.Device")
public:
    explicit Reader(QString user) : user_(std::move(user)) {}
public slots:
    QStringList ListEnrolledFingers(const QString& user) const {
        return user == user_ ? QStringList{"right-index-finger"} : QStringList();
    }

private:
    QString user_;
};

TEST(EnrolledFingers, AreThoseThatTheReaderServiceListsForTheAccount) {
    const test::PrivateBus bus;
    ASSERT_FALSE(bus.address().isEmpty());
    const test::TestFingers fingers(bus.address());
    EXPECT_FALSE(fingers.any("ada")) << "no service";

    test::BusConnection service(bus.address(), "fprintd");
    Manager manager;
    Reader nobodys("nobody");
    Reader adas("ada");
    QThread thread;
    for (QObject* object : std::initializer_list<QObject*>{&manager, &nobodys, &adas})
        object->moveToThread(&thread);
    thread.start();
    constexpr auto all = QDBusConnection::ExportAllSlots;
    ASSERT_TRUE((*service).registerObject("/net/reactivated/Fprint/Manager", &manager, all));
    ASSERT_TRUE((*service).registerObject("/reader/0", &nobodys, all));
    ASSERT_TRUE((*service).registerObject("/reader/1", &adas, all));
    ASSERT_TRUE((*service).registerService("net.reactivated.Fprint"));

    EXPECT_TRUE(fingers.any("ada"));
    EXPECT_FALSE(fingers.any("bob"));
    const test::PamFolder folder;
    EXPECT_EQ(test::TestAuthentication(folder, "desk", "ada", bus.address()).biometry(),
              Biometry::fingerprint);
    EXPECT_EQ(test::TestAuthentication(folder, "desk", "bob", bus.address()).biometry(),
              Biometry::none);
    thread.quit();
    thread.wait();
}

TEST(EnrolledFingers, AreNoneWithoutABus) {
    EXPECT_FALSE(test::TestFingers("unix:path=/nowhere").any("ada"));
}

} // namespace
} // namespace kelvo

#include "EnrolledFingersTest.moc"
