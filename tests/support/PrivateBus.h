#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

namespace kelvo::test {

/// A message bus of the test's own, gone with this object.
class PrivateBus {
public:
    /// `environment` is the daemon's, and that of the services that it starts.
    explicit PrivateBus(
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment()) {
        daemon_.setProcessEnvironment(environment);
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
    /// What the services that it started have written to standard error since the last call.
    QString complaints() { return QString::fromUtf8(daemon_.readAllStandardError()); }

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
