#pragma once

#include "intents/IntentDesk.h"
#include "intents/IntentRequest.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <deque>
#include <optional>

namespace kelvo {

class EngineVM;

/// Where the intents are on the session bus.
namespace IntentBus {
inline const QString interface = QStringLiteral("org.kelvo.Soc2.Intents");
inline const QString notUnderstood = QStringLiteral("org.kelvo.Soc2.Error.NotUnderstood");
inline const QString questionNeeded = QStringLiteral("org.kelvo.Soc2.Error.QuestionNeeded");
inline const QString failed = QStringLiteral("org.kelvo.Soc2.Error.Failed");

/// The objects below the application's own ("/org/kelvo/Soc2" for "org.kelvo.Soc2").
QString intentsPath(const QString& service);
QString runnerPath(const QString& service);
QString searchPath(const QString& service);
} // namespace IntentBus

/// The intents on the session bus, where desktops, launchers and voice front ends call them: the
/// interface org.kelvo.Soc2.Intents, a KRunner runner (org.kde.krunner1) and a GNOME Shell search
/// provider (org.gnome.Shell.SearchProvider2).
///
/// Construct it before the application's name is taken on the bus, so that whoever finds the name
/// finds the objects, too; calls wait until `serve`. Calls never block the bus: each is answered
/// when its intent is done, and others are taken meanwhile. It has no way to answer a presence
/// check, nor to record anything by itself.
class IntentService : public QObject {
    Q_OBJECT

public:
    explicit IntentService(const QString& service,
                           const QDBusConnection& bus = QDBusConnection::sessionBus(),
                           QObject* parent = nullptr);
    ~IntentService() override;

    /// True when all objects are on the bus.
    bool isRegistered() const { return registered_; }

    /// From now on intents run on this engine.
    void serve(EngineVM& engine, LanguageModel& model);

    /// An action of the desktop entry: "run", "approve", or "adopt" and "ask" with one text as
    /// parameter; it runs later. Returns why it was refused, if it was.
    std::optional<QString> activate(const QString& action, const QVariantList& parameters);

    /// Runs an intent; an approval comes back only when the person has answered. False when too
    /// much is under way.
    bool run(const Intent& intent, IntentDone done);
    /// Runs an intent soon, for a caller who must not wait; its dialog is not shown anywhere.
    void runLater(const Intent& intent);

Q_SIGNALS:
    /// An intent runs that brings the application to the front.
    void appWanted();

private Q_SLOTS:
    void runNext();

private:
    IntentDesk desk_;
    std::deque<Intent> later_;
    bool registered_ = false;
};

} // namespace kelvo
