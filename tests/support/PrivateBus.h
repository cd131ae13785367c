#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace kelvo::test {

/// A message bus of the test's own, gone with this object.
class PrivateBus {
public:
    PrivateBus() {
        daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        if (daemon_.waitForStarted() && daemon_.waitForReadyRead()) {
            address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
        }
    }
    ~PrivateBus() {
        daemon_.kill();
        daemon_.waitForFinished();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// Empty when no bus could be started.
    QString address() const { return address_; }

private:
    QProcess daemon_;
    QString address_;
};

/// A connection that is closed with this object.
class BusConnection {
public:
    BusConnection(const QString& address, const QString& name)
        : name_(name), connection_(QDBusConnection::connectToBus(address, name)) {}
    ~BusConnection() { QDBusConnection::disconnectFromBus(name_); }
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

    QDBusConnection& operator*() { return connection_; }

private:
    QString name_;
    QDBusConnection connection_;
};

} // namespace kelvo::test
