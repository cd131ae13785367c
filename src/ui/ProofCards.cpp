#include "ui/ProofCards.h"

#include "proof/ProofWords.h"

#include <QDateTime>
#include <QLocale>
#include <QVariantMap>
#include <algorithm>

namespace kelvo {
namespace {

using Action = ProofCard::Action;
using Kind = ProofTrouble::Kind;

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

QDateTime moment(const std::string& iso) {
    return QDateTime::fromString(text(iso), Qt::ISODate).toLocalTime();
}

QString counted(std::size_t count, const char* one, const char* many) {
    return QString::number(count) + u' ' + QString::fromUtf8(count == 1 ? one : many);
}

QString nameOf(const ProofTrouble& trouble) {
    return text(logName(trouble.computer, trouble.log));
}

/// The last decision whose record has this name.
const LoggedDecision* decisionOf(const ProofComparison& comparison, const std::string& file) {
    const auto found = std::find_if(comparison.decisions.rbegin(), comparison.decisions.rend(),
                                    [&](const LoggedDecision& each) { return each.file == file; });
    return found == comparison.decisions.rend() ? nullptr : &*found;
}

/// “Close access-review — verify to mark this criterion met”, 3 July, Ada Byron
QString quoted(const ProofComparison& comparison, const std::string& file) {
    const LoggedDecision* decision = decisionOf(comparison, file);
    if (decision == nullptr) return {};
    return QStringLiteral("“%1”, %2, %3")
        .arg(text(decision->approved), dayOf(decision->time, comparison.now),
             text(decision->account));
}

QVariantList membersOf(const ProofTrouble& trouble) {
    QVariantList members;
    for (const MemberDifference& each : trouble.differences) {
        members.append(
            QVariantMap{{"member", text(each.member)},
                        {"sealed", each.sealed ? text(*each.sealed) : QStringLiteral("not there")},
                        {"now", each.now ? text(*each.now) : QStringLiteral("not there")}});
    }
    return members;
}

ProofCard goneCard(const ProofComparison& comparison, const ProofTrouble& trouble) {
    ProofCard card{.title = "A record is gone",
                   .symbol = "xmark",
                   .name = text(trouble.file),
                   .detail = quoted(comparison, trouble.file),
                   .files = {trouble.file}};
    if (trouble.restorable) {
        card.text = "Its sealed bytes are kept. Restore writes the same file back.";
        card.actions = {Action::restore, Action::view};
    } else {
        card.text = "Its sealed bytes are not kept here either. Look for it in a backup of this "
                    "folder; its hash is in the log.";
        card.actions = {Action::openFolder};
    }
    return card;
}

ProofCard alteredCard(const ProofComparison& comparison, const ProofTrouble& trouble) {
    ProofCard card{.title = "A record was changed after it was sealed",
                   .symbol = "exclamationmark.circle",
                   .name = text(trouble.file),
                   .detail = quoted(comparison, trouble.file),
                   .members = membersOf(trouble),
                   .files = {trouble.file}};
    if (trouble.restorable) {
        card.note = "The changed file stays beside it, under another name.";
        card.actions = {Action::restore};
    } else {
        card.text = "Its sealed bytes are not kept here. Look for them in a backup of this folder.";
        card.actions = {Action::openFolder};
    }
    return card;
}

/// Readiness counts it or not: both are said, since nobody can see it from the file.
QString countedWords(bool counted) {
    return counted ? QStringLiteral("Readiness counts it.")
                   : QStringLiteral("Readiness does not count it.");
}

ProofCard unlistedCard(const ProofTrouble& trouble, const ProofComparison& comparison,
                       const GlanceAt& glance) {
    ProofCard card{.title = "A record that no log knows",
                   .symbol = "questionmark.circle",
                   .name = text(trouble.file),
                   .files = {trouble.file}};
    const auto seen = glance(trouble.file);
    if (seen) {
        if (!seen->asOf.isEmpty()) {
            card.name += ", dated " + dayOf(seen->asOf.toStdString(), comparison.now);
        }
        const QString who = seen->owner.isEmpty() ? QStringLiteral("somebody") : seen->owner;
        card.detail =
            seen->criterion.isEmpty()
                ? QStringLiteral("It closes no criterion.")
                : QStringLiteral("It says that %1 was closed by %2. ").arg(seen->criterion, who) +
                      countedWords(trouble.counted);
    }
    if (trouble.adoptable) {
        card.text = "If you know it, adopt it: from then on the log lists it, and says that it was "
                    "adopted today. If nobody knows it, move it away and find out who can write to "
                    "this folder.";
        card.actions = {Action::adopt, Action::openFolder};
    } else {
        card.text = "What was sealed cannot be rebuilt from it, or it is dated after now, so no "
                    "log can take it. Move it away and find out who can write to this folder.";
        card.actions = {Action::openFolder};
    }
    return card;
}

ProofCard earlierCard(const std::vector<ProofTrouble>& troubles) {
    ProofCard card{.title = "Records from before the log", .symbol = "clock"};
    for (const ProofTrouble& trouble : troubles) {
        if (trouble.kind == Kind::recordEarlier) card.files.push_back(trouble.file);
    }
    card.detail = counted(card.files.size(), "record is", "records are") +
                  " older than the log, or lost their line.";
    card.text =
        "Adopt them once: from then on they cannot vanish or change unnoticed. The log says "
        "that they were adopted today.";
    card.actions = {Action::adopt, Action::openFolder};
    return card;
}

ProofCard logCard(const ProofTrouble& trouble, const QString& sentence) {
    ProofCard card{.title = "A log needs a look",
                   .symbol = "exclamationmark.circle",
                   .detail = sentence,
                   .actions = {Action::openFolder}};
    const QString name = nameOf(trouble);
    switch (trouble.kind) {
    case Kind::logDamaged:
        card.title = "A log is damaged";
        card.text = QStringLiteral("What is before line %1 holds. What is after it proves nothing.")
                        .arg(trouble.line);
        break;
    case Kind::ownLogLeft:
        card.title = "This computer's log was left";
        card.text =
            "It is not as this computer last wrote it: set back by a backup, continued by a "
            "copied computer, or changed. It is left as it is.";
        break;
    case Kind::logGone:
        card.title = "A log is gone";
        card.text = "It was here before. Look for it in a backup of this folder, and ask who "
                    "removed it.";
        break;
    case Kind::logRewritten:
        card.title = "A log was rewritten";
        card.text = "It no longer begins as it did. An earlier checkpoint shows which is the "
                    "genuine one.";
        break;
    case Kind::logShorter:
        card.title = "A log is shorter than it was";
        card.text = QStringLiteral("%1 of its lines are missing.").arg(trouble.line);
        break;
    case Kind::copiesDisagree:
        card.title = "Two copies of a log disagree";
        card.name = text(trouble.file);
        card.text = "Decisions that only the copy has are in no log. Ask on " + name +
                    " which of the two is its own.";
        break;
    case Kind::foreignLog:
        card.title = "A log of another organisation";
        card.text = "It is not counted. Whoever put it here may have chosen the wrong folder.";
        break;
    case Kind::recordGone:
    case Kind::recordAltered:
    case Kind::recordUnlisted:
    case Kind::recordEarlier:
    case Kind::recordUnreadable:
    case Kind::evidenceGone:
    case Kind::evidenceNotKept:
    case Kind::graphChanged:
    case Kind::clockAhead:
    case Kind::notCountedYet:
    case Kind::copyHarmless:
    case Kind::arriving:
        break;
    }
    return card;
}

ProofCard evidenceCard(const ProofComparison& comparison, const ProofTrouble& trouble) {
    ProofCard card{.title = trouble.kind == Kind::evidenceGone ? "Kept evidence is gone"
                                                               : "Evidence was not kept",
                   .symbol = "doc.badge.clock",
                   .name = text(trouble.file),
                   .detail = quoted(comparison, trouble.file),
                   .actions = {Action::supply},
                   .files = {trouble.file},
                   .evidence = trouble.evidence};
    card.text = trouble.reason.empty() ? QString() : text(trouble.reason) + u'.';
    if (!card.text.isEmpty()) card.text[0] = card.text[0].toUpper();
    card.text += (card.text.isEmpty() ? "" : " ") +
                 QStringLiteral("The seal stands. If you have the file, its hash will tell.");
    return card;
}

ProofCard quietCard(const ProofTrouble& trouble, const ProofComparison& comparison) {
    ProofCard card{.symbol = "info.circle", .amber = false};
    if (trouble.kind == Kind::copyHarmless) {
        card.title = "A copy that a synchronising program made";
        card.name = text(trouble.file);
        card.text = "It is the beginning of the log and harmless; it may be removed.";
        card.actions = {Action::openFolder};
        return card;
    }
    card.title = "Still arriving";
    card.symbol = "clock";
    const auto files = std::count_if(
        comparison.troubles.begin(), comparison.troubles.end(), [&](const ProofTrouble& each) {
            return each.kind == Kind::arriving && each.log == trouble.log;
        });
    const QString from = trouble.log.empty() ? QString() : " of " + nameOf(trouble);
    card.text = counted(static_cast<std::size_t>(files), "file", "files") + from +
                (files == 1 ? " is on its way since " : " are on their way since ") +
                timeOf(trouble.since) + u'.';
    return card;
}

ProofCard otherCard(const ProofTrouble& trouble, const QString& sentence) {
    ProofCard card{.title = sentence, .symbol = "exclamationmark.circle"};
    switch (trouble.kind) {
    case Kind::recordUnreadable:
        card.title = "A record cannot be read";
        card.name = text(trouble.file);
        card.detail = text(trouble.reason);
        card.text = "Readiness leaves it out until it can be read.";
        card.actions = {Action::openFolder};
        break;
    case Kind::notCountedYet:
        card.title = "Decisions that readiness does not count yet";
        card.detail = sentence;
        card.text = "They are in the log and come in when the program starts anew.";
        break;
    case Kind::graphChanged:
        card.title = "A level was raised without a decision";
        for (const RaisedLevel& each : trouble.raised) {
            card.members.append(QVariantMap{{"member", text(each.criterion)},
                                            {"sealed", QString::number(each.before)},
                                            {"now", QString::number(each.now)}});
        }
        card.text =
            "The readiness graph says so since this computer's last decision. Nobody sealed "
            "it; the audit will call it declared.";
        card.actions = {Action::openFolder};
        break;
    case Kind::clockAhead:
        card.title = "A clock is ahead";
        card.detail = sentence;
        card.text = "Times in a log are its computer's own. Set that clock right.";
        break;
    case Kind::logDamaged:
    case Kind::ownLogLeft:
    case Kind::logGone:
    case Kind::logRewritten:
    case Kind::logShorter:
    case Kind::copiesDisagree:
    case Kind::recordGone:
    case Kind::recordAltered:
    case Kind::recordUnlisted:
    case Kind::recordEarlier:
    case Kind::evidenceGone:
    case Kind::evidenceNotKept:
    case Kind::foreignLog:
    case Kind::copyHarmless:
    case Kind::arriving:
        break;
    }
    return card;
}

ProofCard unwrittenCard(const std::vector<UnwrittenRecords::Entry>& unwritten) {
    QStringList titles;
    for (const UnwrittenRecords::Entry& entry : unwritten)
        titles.append(text(entry.title));
    return {.title = "Not on disk",
            .symbol = "exclamationmark.circle",
            .detail = titles.join(QStringLiteral("\n")),
            .text =
                QStringLiteral("Sealed since %1, and not written: %2. It is tried again every few "
                               "seconds; it is gone when the window closes before that.")
                    .arg(timeOf(unwritten.front().since), text(unwritten.back().reason)),
            .actions = {Action::retry, Action::saveElsewhere}};
}

ProofCard unkeptCard(const Unkept& unkept) {
    QStringList missing;
    if (unkept.record) missing.append("the record");
    if (unkept.evidence) missing.append("the evidence");
    if (unkept.line) missing.append("the line in the log");
    return {.title = "Not kept yet",
            .symbol = "clock",
            .name = text(unkept.file),
            .detail = QStringLiteral("“%1”").arg(text(unkept.approved)),
            .text = QStringLiteral("Since %1, %2: %3. It is tried again every few seconds.")
                        .arg(timeOf(unkept.since), missing.join(" and "), text(unkept.reason)),
            .actions = {Action::retry}};
}

/// The line of trouble for this one alone.
QString sentenceOf(const ProofComparison& comparison, const ProofTrouble& trouble) {
    ProofComparison alone;
    alone.now = comparison.now;
    alone.troubles = {trouble};
    const std::vector<std::string> lines = troubleLines(alone);
    return lines.empty() ? QString() : text(lines.front());
}

bool isLogTrouble(Kind kind) {
    return kind <= Kind::copiesDisagree || kind == Kind::foreignLog;
}

} // namespace

QString dayOf(const std::string& iso, const std::string& now) {
    const QDateTime when = moment(iso);
    if (!when.isValid()) return QStringLiteral("an unknown day");
    const bool sameYear = when.date().year() == moment(now).date().year();
    return QLocale(QLocale::English)
        .toString(when.date(), sameYear ? QStringLiteral("d MMMM") : QStringLiteral("d MMMM yyyy"));
}

QString timeOf(const std::string& iso) {
    const QDateTime when = moment(iso);
    return when.isValid() ? when.time().toString(QStringLiteral("HH:mm")) : QStringLiteral("--:--");
}

QString actionLabel(const ProofCard& card, ProofCard::Action action) {
    switch (action) {
    case Action::restore:
        return card.members.isEmpty() ? "Restore" : "Restore the sealed one";
    case Action::view:
        return "View";
    case Action::adopt:
        return "Adopt " + counted(card.files.size(), "earlier record", "earlier records");
    case Action::openFolder:
        return "Open the folder";
    case Action::retry:
        return "Try now";
    case Action::saveElsewhere:
        return "Save a copy elsewhere";
    case Action::supply:
        return "Supply the file…";
    }
    return {};
}

std::vector<ProofCard> proofCards(const ProofComparison& comparison,
                                  const std::vector<Unkept>& unkept,
                                  const std::vector<UnwrittenRecords::Entry>& unwritten,
                                  const GlanceAt& glance) {
    std::vector<ProofCard> cards;
    if (!unwritten.empty()) cards.push_back(unwrittenCard(unwritten));
    for (const Unkept& each : unkept) {
        if (!each.waiting) cards.push_back(unkeptCard(each));
    }
    bool toldEarlier = false;
    std::vector<std::string> toldArriving;
    for (const ProofTrouble& trouble : comparison.troubles) {
        const auto told = [&] {
            return std::find(toldArriving.begin(), toldArriving.end(), trouble.log) !=
                   toldArriving.end();
        };
        const QString sentence = sentenceOf(comparison, trouble);
        switch (trouble.kind) {
        case Kind::recordGone:
            cards.push_back(goneCard(comparison, trouble));
            break;
        case Kind::recordAltered:
            cards.push_back(alteredCard(comparison, trouble));
            break;
        case Kind::recordUnlisted:
            cards.push_back(unlistedCard(trouble, comparison, glance));
            break;
        case Kind::recordEarlier:
            if (!toldEarlier) cards.push_back(earlierCard(comparison.troubles));
            toldEarlier = true;
            break;
        case Kind::evidenceGone:
        case Kind::evidenceNotKept:
            cards.push_back(evidenceCard(comparison, trouble));
            break;
        case Kind::arriving:
            if (!told()) cards.push_back(quietCard(trouble, comparison));
            toldArriving.push_back(trouble.log);
            break;
        case Kind::copyHarmless:
            cards.push_back(quietCard(trouble, comparison));
            break;
        case Kind::logDamaged:
        case Kind::ownLogLeft:
        case Kind::logGone:
        case Kind::logRewritten:
        case Kind::logShorter:
        case Kind::copiesDisagree:
        case Kind::recordUnreadable:
        case Kind::graphChanged:
        case Kind::clockAhead:
        case Kind::foreignLog:
        case Kind::notCountedYet:
            cards.push_back(isLogTrouble(trouble.kind) ? logCard(trouble, sentence)
                                                       : otherCard(trouble, sentence));
        }
    }
    return cards;
}

} // namespace kelvo
