#include "platform/bus/IntentService.h"

#include "platform/bus/IntentObjects.h"

#include <QDBusMetaType>
#include <QMetaObject>
#include <utility>

namespace kelvo {
namespace {

QString pathOf(QString service) {
    return u'/' + service.replace(u'.', u'/');
}

} // namespace

QString IntentBus::intentsPath(const QString& service) {
    return pathOf(service) + QStringLiteral("/Intents");
}

QString IntentBus::runnerPath(const QString& service) {
    return pathOf(service) + QStringLiteral("/Runner");
}

QString IntentBus::searchPath(const QString& service) {
    return pathOf(service) + QStringLiteral("/Search");
}

IntentService::IntentService(const QString& service, const QDBusConnection& bus, QObject* parent)
    : QObject(parent) {
    qDBusRegisterMetaType<RunnerMatch>();
    qDBusRegisterMetaType<RunnerMatches>();
    qDBusRegisterMetaType<RunnerAction>();
    qDBusRegisterMetaType<RunnerActions>();
    qDBusRegisterMetaType<ResultMetas>();
    QDBusConnection connection = bus;
    const auto publish = [&](const QString& path, QObject* object) {
        return connection.registerObject(path, object, QDBusConnection::ExportAllSlots);
    };
    registered_ = bus.isConnected() &&
                  publish(IntentBus::intentsPath(service), new IntentsObject(*this)) &&
                  publish(IntentBus::runnerPath(service), new RunnerObject(*this)) &&
                  publish(IntentBus::searchPath(service), new SearchObject(*this));
}

IntentService::~IntentService() = default;

void IntentService::serve(EngineVM& engine, LanguageModel& model) {
    IntentContext context{engine, model};
    context.openApp = [this] { Q_EMIT appWanted(); };
    desk_.open(context);
}

bool IntentService::run(const Intent& intent, IntentDone done) {
    return desk_.submit(intent, std::move(done));
}

std::optional<QString> IntentService::activate(const QString& action,
                                               const QVariantList& parameters) {
    if (parameters.size() > 1 ||
        (parameters.size() == 1 && parameters[0].metaType().id() != QMetaType::QString)) {
        return QStringLiteral("An action takes one text at most.");
    }
    const std::string parameter =
        parameters.isEmpty() ? std::string() : parameters[0].toString().toStdString();
    const auto intent = readIntent(action.toStdString(), parameter);
    if (!intent) return QString::fromStdString(intent.error());
    runLater(*intent);
    return std::nullopt;
}

void IntentService::runLater(const Intent& intent) {
    later_.push_back(intent);
    QMetaObject::invokeMethod(this, "runNext", Qt::QueuedConnection);
}

void IntentService::runNext() {
    const Intent intent = std::move(later_.front());
    later_.pop_front();
    (void)run(intent, [](const auto&) {});
}

} // namespace kelvo
