#include "ui/Appearance.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEvent>
#include <QGuiApplication>
#include <QMetaType>
#include <QPalette>

namespace kelvo {
namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

} // namespace

Appearance::Appearance(QDBusConnection bus) {
    // The palette itself has no signal that would be here to stay.
    QCoreApplication::instance()->installEventFilter(this);
    // The bus looks up the types of the slot's parameters by their names.
    qRegisterMetaType<QDBusVariant>();
    bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    question << appearance << colorScheme;
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid()) take(reply.value().variant());
        answer->deleteLater();
    });
}

bool Appearance::dark() const {
    if (prefersDark_) return *prefersDark_;
    return QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange) Q_EMIT changed();
    return QObject::eventFilter(watched, event);
}

void Appearance::settingChanged(const QString& group, const QString& key,
                                const QDBusVariant& value) {
    if (group == appearance && key == colorScheme) take(value.variant());
}

void Appearance::take(const QVariant& value) {
    // The portal's older call wraps its answer in one variant more.
    const QVariant inner =
        value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
    switch (inner.toUInt()) {
    case 1:
        prefersDark_ = true;
        break;
    case 2:
        prefersDark_ = false;
        break;
    default:
        prefersDark_.reset();
    }
    Q_EMIT changed();
}

} // namespace kelvo
