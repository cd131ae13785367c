#pragma once

#include "platform/bus/IntentService.h"

#include <QDBusArgument>
#include <QDBusContext>
#include <QList>
#include <QStringList>
#include <QVariantMap>

namespace kelvo {

/// One row of a KRunner answer, a(sssida{sv}).
struct RunnerMatch {
    QString id;
    QString text;
    QString icon;
    int type = 0;
    double relevance = 0;
    QVariantMap properties{};
};
using RunnerMatches = QList<RunnerMatch>;

/// One action of a KRunner row, a(sss); there are none.
struct RunnerAction {
    QString id;
    QString text;
    QString icon;
};
using RunnerActions = QList<RunnerAction>;

using ResultMetas = QList<QVariantMap>;

QDBusArgument& operator<<(QDBusArgument& out, const RunnerMatch& match);
const QDBusArgument& operator>>(const QDBusArgument& in, RunnerMatch& match);
QDBusArgument& operator<<(QDBusArgument& out, const RunnerAction& action);
const QDBusArgument& operator>>(const QDBusArgument& in, RunnerAction& action);

/// What the three objects share: the answer to the caller, now or later.
class IntentCaller : public QObject, protected QDBusContext {
    Q_OBJECT

protected:
    explicit IntentCaller(IntentService& service);

    /// Runs the intent and answers the call with its dialog, or with why there is none.
    void answerWithDialog(const tl::expected<Intent, std::string>& intent);
    /// Runs the intent later; the call is answered with nothing, at once.
    void runQuietly(const tl::expected<Intent, std::string>& intent);

    IntentService& service_;
};

class IntentsObject : public IntentCaller {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kelvo.Soc2.Intents")

public:
    explicit IntentsObject(IntentService& service) : IntentCaller(service) {}

public Q_SLOTS:
    QString Ask(const QString& question);
    QString Adopt(const QString& family);
    QString Run();
    QString Approve();
    /// Runs what a sentence asks for, where it is one of the phrases.
    QString Say(const QString& sentence);
    /// Every phrase, as it is said.
    QStringList Phrases() const;
};

class RunnerObject : public IntentCaller {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.krunner1")

public:
    explicit RunnerObject(IntentService& service) : IntentCaller(service) {}

public Q_SLOTS:
    RunnerActions Actions() const;
    RunnerMatches Match(const QString& query) const;
    void Run(const QString& matchId, const QString& actionId);
};

class SearchObject : public IntentCaller {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Shell.SearchProvider2")

public:
    explicit SearchObject(IntentService& service) : IntentCaller(service) {}

public Q_SLOTS:
    QStringList GetInitialResultSet(const QStringList& terms) const;
    QStringList GetSubsearchResultSet(const QStringList& previous, const QStringList& terms) const;
    ResultMetas GetResultMetas(const QStringList& ids) const;
    void ActivateResult(const QString& id, const QStringList& terms, uint timestamp);
    void LaunchSearch(const QStringList& terms, uint timestamp);
};

} // namespace kelvo

Q_DECLARE_METATYPE(kelvo::RunnerMatch)
Q_DECLARE_METATYPE(kelvo::RunnerAction)
