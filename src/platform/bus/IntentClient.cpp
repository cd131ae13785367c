#include "platform/bus/IntentClient.h"

#include "intents/IntentRequest.h"
#include "platform/bus/IntentService.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <limits>

namespace kelvo {
namespace {

const QString service = QStringLiteral("org.kelvo.Soc2");

CallFailure::Kind kindOf(const QDBusMessage& reply) {
    using Kind = CallFailure::Kind;
    const QString name = reply.errorName();
    if (name == IntentBus::failed) return Kind::failed;
    if (name == IntentBus::notUnderstood) return Kind::notUnderstood;
    if (name == IntentBus::questionNeeded) return Kind::questionNeeded;
    switch (QDBusError(reply).type()) {
    case QDBusError::InvalidArgs:
        return Kind::badRequest;
    case QDBusError::LimitsExceeded:
        return Kind::busy;
    default:
        return Kind::unreachable;
    }
}

/// What is made first is torn down last: the toolkit's thread for the bus uses registered types to
/// its end, so their registry has to be there before it.
QDBusConnection sessionBus() {
    qRegisterMetaType<QDBusVariant>();
    return QDBusConnection::sessionBus();
}

} // namespace

IntentClient::IntentClient() : bus_(sessionBus()) {
}

IntentClient::Dialog IntentClient::run(const Intent& intent) {
    struct Method {
        QString operator()(const AskKelvoAgentIntent&) const { return QStringLiteral("Ask"); }
        QString operator()(const AdoptFamilyIntent&) const { return QStringLiteral("Adopt"); }
        QString operator()(const PlayKelvoIntent&) const { return QStringLiteral("Run"); }
        QString operator()(const SealKelvoIntent&) const { return QStringLiteral("Approve"); }
    };
    const std::string parameter = requestParameter(intent);
    QStringList arguments;
    if (typeOf(intent).parameterTitle.size() > 0) arguments << QString::fromStdString(parameter);
    return call(std::visit(Method(), intent), arguments);
}

IntentClient::Dialog IntentClient::say(const QString& sentence) {
    return call(QStringLiteral("Say"), {sentence});
}

IntentClient::Dialog IntentClient::call(const QString& method, const QStringList& arguments) {
    if (!bus_.isConnected()) {
        return tl::unexpected(CallFailure{CallFailure::Kind::unreachable,
                                          QStringLiteral("There is no session bus.")});
    }
    QDBusMessage request = QDBusMessage::createMethodCall(service, IntentBus::intentsPath(service),
                                                          IntentBus::interface, method);
    for (const QString& argument : arguments)
        request << argument;
    const QDBusMessage reply = bus_.call(request, QDBus::Block, std::numeric_limits<int>::max());
    if (reply.type() == QDBusMessage::ReplyMessage) return reply.arguments().value(0).toString();
    return tl::unexpected(CallFailure{kindOf(reply), reply.errorMessage()});
}

} // namespace kelvo
