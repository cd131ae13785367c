#pragma once

#include "ports/Notifications.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace kelvo {

/// Notifications through the desktop's service on the session bus (Desktop Notifications
/// Specification 1.2, org.freedesktop.Notifications). Nothing here waits for the bus.
class DesktopNotifications : public Notifications {
public:
    /// `applicationName` is what a desktop shows as the sender. `desktopFileId` is the name of the
    /// installed desktop file without ".desktop"; without one the process is no registered
    /// application.
    DesktopNotifications(QString applicationName, QString desktopFileId,
                         QDBusConnection bus = QDBusConnection::sessionBus());

    bool hasApplicationIdentity() const override { return !desktopFileId_.isEmpty(); }

    /// Linux desktops ask no leave: the person switches an application's notifications off in the
    /// desktop's settings.
    void requestAuthorization() override {}

    /// Title and body are shown as plain text, also by a service that understands markup.
    void post(const Notification& notification, std::function<void()> undelivered) override;

    /// To standard error, and to the system log where standard error does not lead there.
    void console(const std::string& line) override;

private:
    void send(const Notification& notification, bool markup, std::function<void()> undelivered);

    QString applicationName_;
    QString desktopFileId_;
    QDBusConnection bus_;
    QObject context_; ///< answers that arrive after this object are ignored
};

} // namespace kelvo
