#include "app/SingleInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <utility>

namespace kelvo {
namespace {

QString pathOf(QString name) {
    return u'/' + name.replace(u'.', u'/');
}

} // namespace

SingleInstance::SingleInstance(QString name, QDBusConnection bus)
    : name_(std::move(name)), bus_(std::move(bus)) {
    if (!bus_.isConnected()) return;
    // The object first, so that whoever finds the name also finds what it stands for.
    bus_.registerObject(pathOf(name_), this, QDBusConnection::ExportAllSlots);
    first_ = bus_.registerService(name_);
}

void SingleInstance::activateFirst() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        name_, pathOf(name_), QStringLiteral("org.freedesktop.Application"),
        QStringLiteral("Activate"));
    call << QVariantMap();
    bus_.call(call, QDBus::Block, 3000);
}

void SingleInstance::setActions(Actions actions) {
    actions_ = std::move(actions);
}

void SingleInstance::Activate(const QVariantMap& /*platformData*/) {
    Q_EMIT activated();
}

void SingleInstance::Open(const QStringList& /*uris*/, const QVariantMap& /*platformData*/) {
    Q_EMIT activated();
}

void SingleInstance::ActivateAction(const QString& action, const QVariantList& parameters,
                                    const QVariantMap& /*platformData*/) {
    const std::optional<QString> refusal =
        actions_ ? actions_(action, parameters) : QStringLiteral("There are no actions.");
    if (refusal) sendErrorReply(QDBusError::InvalidArgs, *refusal);
}

} // namespace kelvo
