#include "platform/bus/IntentObjects.h"

#include "intents/KelvoShortcuts.h"
#include "intents/PhraseMatcher.h"

#include <QDBusError>
#include <QDBusMessage>

namespace kelvo {
namespace {

/// How KRunner sorts: a phrase that is whole is what was meant.
constexpr int exactMatch = 100;
constexpr int possibleMatch = 30;

const QString icon = QStringLiteral("org.kelvo.Soc2");

QString offerTitle(const PhraseOffer& offer) {
    QString text = QString::fromStdString(offer.text);
    if (!std::holds_alternative<AskKelvoAgentIntent>(offer.intent)) return text;
    return QString::fromUtf8(offer.shortTitle.data(), qsizetype(offer.shortTitle.size())) +
           QStringLiteral(": ") + text;
}

QString offerSubtitle(const PhraseOffer& offer) {
    const std::string_view title = typeOf(offer.intent).title;
    return QString::fromUtf8(title.data(), qsizetype(title.size()));
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& out, const RunnerMatch& match) {
    out.beginStructure();
    out << match.id << match.text << match.icon << match.type << match.relevance
        << match.properties;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, RunnerMatch& match) {
    in.beginStructure();
    in >> match.id >> match.text >> match.icon >> match.type >> match.relevance >> match.properties;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const RunnerAction& action) {
    out.beginStructure();
    out << action.id << action.text << action.icon;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, RunnerAction& action) {
    in.beginStructure();
    in >> action.id >> action.text >> action.icon;
    in.endStructure();
    return in;
}

IntentCaller::IntentCaller(IntentService& service) : QObject(&service), service_(service) {
}

void IntentCaller::answerWithDialog(const tl::expected<Intent, std::string>& intent) {
    if (!intent) {
        return sendErrorReply(QDBusError::InvalidArgs, QString::fromStdString(intent.error()));
    }
    setDelayedReply(true);
    const QDBusMessage call = message();
    const QDBusConnection caller = connection();
    const bool taken =
        service_.run(*intent, [call, caller](const tl::expected<std::string, IntentFailure>& got) {
            const auto said = [](const std::string& text) { return QString::fromStdString(text); };
            caller.send(
                got ? call.createReply(said(*got))
                    : call.createErrorReply(IntentBus::failed, said(got.error().description)));
        });
    if (taken) return;
    caller.send(
        call.createErrorReply(QDBusError::LimitsExceeded,
                              QStringLiteral("Too many requests are under way; try again later.")));
}

void IntentCaller::runQuietly(const tl::expected<Intent, std::string>& intent) {
    if (!intent) {
        return sendErrorReply(QDBusError::InvalidArgs, QString::fromStdString(intent.error()));
    }
    service_.runLater(*intent);
}

QString IntentsObject::Ask(const QString& question) {
    answerWithDialog(readIntent("ask", question.toStdString()));
    return {};
}

QString IntentsObject::Adopt(const QString& family) {
    answerWithDialog(readIntent("adopt", family.toStdString()));
    return {};
}

QString IntentsObject::Run() {
    answerWithDialog(PlayKelvoIntent{});
    return {};
}

QString IntentsObject::Approve() {
    answerWithDialog(SealKelvoIntent{});
    return {};
}

QString IntentsObject::Say(const QString& sentence) {
    const auto intent = matchPhrase(sentence.toStdString());
    const auto* ask = intent ? std::get_if<AskKelvoAgentIntent>(&*intent) : nullptr;
    if (!intent) {
        sendErrorReply(IntentBus::notUnderstood,
                       QStringLiteral("That is none of the phrases, so nothing was done."));
    } else if (ask != nullptr && ask->question.empty()) {
        sendErrorReply(IntentBus::questionNeeded, QStringLiteral("What is the question?"));
    } else if (ask != nullptr) {
        answerWithDialog(readIntent("ask", ask->question));
    } else {
        answerWithDialog(*intent);
    }
    return {};
}

QStringList IntentsObject::Phrases() const {
    QStringList phrases;
    for (const SpokenPhrase& phrase : KelvoShortcuts::spokenPhrases())
        phrases << QString::fromStdString(phrase.text);
    return phrases;
}

RunnerActions RunnerObject::Actions() const {
    return {};
}

RunnerMatches RunnerObject::Match(const QString& query) const {
    RunnerMatches matches;
    for (const PhraseOffer& offer : phraseOffers(query.toStdString())) {
        matches << RunnerMatch{QString::fromStdString(intentId(offer.intent)),
                               offerTitle(offer),
                               icon,
                               offer.whole ? exactMatch : possibleMatch,
                               offer.whole ? 1.0 : 0.5,
                               {{QStringLiteral("subtext"), offerSubtitle(offer)}}};
    }
    return matches;
}

void RunnerObject::Run(const QString& matchId, const QString& /*actionId*/) {
    runQuietly(readIntentId(matchId.toStdString()));
}

QStringList SearchObject::GetInitialResultSet(const QStringList& terms) const {
    QStringList ids;
    for (const PhraseOffer& offer : phraseOffers(terms.join(u' ').toStdString()))
        ids << QString::fromStdString(intentId(offer.intent));
    return ids;
}

QStringList SearchObject::GetSubsearchResultSet(const QStringList& /*previous*/,
                                                const QStringList& terms) const {
    return GetInitialResultSet(terms);
}

ResultMetas SearchObject::GetResultMetas(const QStringList& ids) const {
    ResultMetas metas;
    for (const QString& id : ids) {
        const auto intent = readIntentId(id.toStdString());
        if (!intent) continue;
        const AppShortcut& shortcut = KelvoShortcuts::shortcutOf(*intent);
        const QString parameter = QString::fromStdString(requestParameter(*intent));
        const QString title =
            QString::fromUtf8(shortcut.shortTitle.data(), qsizetype(shortcut.shortTitle.size()));
        metas << QVariantMap{
            {QStringLiteral("id"), id},
            {QStringLiteral("name"),
             parameter.isEmpty() ? title : title + QStringLiteral(": ") + parameter},
            {QStringLiteral("description"),
             QString::fromUtf8(shortcut.intent.title.data(),
                               qsizetype(shortcut.intent.title.size()))},
            {QStringLiteral("gicon"), icon}};
    }
    return metas;
}

void SearchObject::ActivateResult(const QString& id, const QStringList& /*terms*/,
                                  uint /*timestamp*/) {
    runQuietly(readIntentId(id.toStdString()));
}

void SearchObject::LaunchSearch(const QStringList& /*terms*/, uint /*timestamp*/) {
    Q_EMIT service_.appWanted();
}

} // namespace kelvo
