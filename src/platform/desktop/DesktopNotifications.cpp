#include "platform/desktop/DesktopNotifications.h"

#include <syslog.h>

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>
#include <cstdio>
#include <utility>

namespace kelvo {
namespace {

constexpr int answerWithinMs = 5000;

QDBusMessage method(const char* name) {
    return QDBusMessage::createMethodCall("org.freedesktop.Notifications",
                                          "/org/freedesktop/Notifications",
                                          "org.freedesktop.Notifications", name);
}

} // namespace

DesktopNotifications::DesktopNotifications(QString applicationName, QString desktopFileId,
                                           QDBusConnection bus)
    : applicationName_(std::move(applicationName)), desktopFileId_(std::move(desktopFileId)),
      bus_(std::move(bus)) {
}

void DesktopNotifications::post(const Notification& notification,
                                std::function<void()> undelivered) {
    if (!bus_.isConnected()) {
        // No call on such a connection is ever answered.
        QMetaObject::invokeMethod(&context_, std::move(undelivered), Qt::QueuedConnection);
        return;
    }
    // Whether a body may hold markup differs between services, and with it what must be escaped.
    auto* watcher = new QDBusPendingCallWatcher(
        bus_.asyncCall(method("GetCapabilities"), answerWithinMs), &context_);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context_,
                     [this, watcher, notification, undelivered = std::move(undelivered)] {
                         watcher->deleteLater();
                         const QDBusPendingReply<QStringList> reply = *watcher;
                         if (reply.isError()) {
                             undelivered();
                             return;
                         }
                         send(notification, reply.value().contains("body-markup"), undelivered);
                     });
}

void DesktopNotifications::send(const Notification& notification, bool markup,
                                std::function<void()> undelivered) {
    const QString body = QString::fromStdString(notification.body);
    const QVariantMap hints = {
        {"desktop-entry", desktopFileId_},
        {"sound-name", "message-new-instant"},
        {"x-kelvo-identifier", QString::fromStdString(notification.identifier)}};
    QDBusMessage call = method("Notify");
    call << applicationName_ << 0U << desktopFileId_ << QString::fromStdString(notification.title)
         << (markup ? body.toHtmlEscaped() : body) << QStringList() << hints << -1;
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, answerWithinMs), &context_);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context_,
                     [watcher, undelivered = std::move(undelivered)] {
                         watcher->deleteLater();
                         if (watcher->isError()) undelivered();
                     });
}

void DesktopNotifications::console(const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
    // A session that is run by systemd leads standard error to the system log by itself.
    if (!qEnvironmentVariableIsSet("JOURNAL_STREAM")) {
        ::syslog(LOG_USER | LOG_NOTICE, "%s", line.c_str());
    }
}

} // namespace kelvo
