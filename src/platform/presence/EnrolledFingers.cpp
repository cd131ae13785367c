#include "platform/presence/EnrolledFingers.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDeadlineTimer>
#include <QList>
#include <QStringList>

namespace kelvo {
namespace {

const char* const service = "net.reactivated.Fprint";

/// A connection of its own for one question, closed afterwards.
class PrivateBus {
public:
    explicit PrivateBus(const QString& address)
        : connection_(QDBusConnection::connectToBus(address, name())) {}
    ~PrivateBus() { QDBusConnection::disconnectFromBus(name()); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    bool isConnected() const { return connection_.isConnected(); }
    QDBusMessage call(const QDBusMessage& message, const QDeadlineTimer& deadline) const {
        const auto left = static_cast<int>(deadline.remainingTime());
        return connection_.call(message, QDBus::Block, left < 1 ? 1 : left);
    }

private:
    static QString name() { return QStringLiteral("kelvo-fprintd"); }

    QDBusConnection connection_;
};

} // namespace

QString EnrolledFingers::busAddress() const {
    return QStringLiteral("unix:path=/run/dbus/system_bus_socket");
}

bool EnrolledFingers::any(const std::string& user) const {
    const QDeadlineTimer deadline(2000);
    const PrivateBus bus(busAddress());
    if (!bus.isConnected()) return false;
    const QDBusReply<QList<QDBusObjectPath>> readers =
        bus.call(QDBusMessage::createMethodCall(service, "/net/reactivated/Fprint/Manager",
                                                "net.reactivated.Fprint.Manager", "GetDevices"),
                 deadline);
    if (!readers.isValid()) return false;
    for (const QDBusObjectPath& reader : readers.value()) {
        QDBusMessage question = QDBusMessage::createMethodCall(
            service, reader.path(), "net.reactivated.Fprint.Device", "ListEnrolledFingers");
        question << QString::fromStdString(user);
        const QDBusReply<QStringList> fingers = bus.call(question, deadline);
        if (fingers.isValid() && !fingers.value().isEmpty()) return true;
    }
    return false;
}

} // namespace kelvo
