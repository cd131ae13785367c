#include "ui/ProofView.h"

#include "base/Files.h"
#include "base/Text.h"
#include "proof/ProofSummary.h"
#include "proof/ProofWords.h"

#include <QFile>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace kelvo {
namespace {

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// The largest record or checkpoint that is looked at.
constexpr std::size_t largestGlance = std::size_t{16} << 20;

QString sentence(QString words) {
    if (!words.isEmpty()) words[0] = words[0].toUpper();
    return words.endsWith(u'.') ? words : words + u'.';
}

QString member(const Json& record, const char* key) {
    const auto found = record.find(key);
    return found != record.end() && found->is_string() ? text(found->get<std::string>())
                                                       : QString();
}

QString notOnDisk(int count) {
    return count == 1 ? QStringLiteral("1 decision is not on disk")
                      : QStringLiteral("%1 decisions are not on disk").arg(count);
}

bool holds(const QString& haystack, const QString& needle) {
    return haystack.contains(needle, Qt::CaseInsensitive);
}

} // namespace

ProofView::ProofView(EngineVM& engine, OtherPrograms& programs, QObject* parent)
    : QObject(parent), engine_(engine), programs_(programs),
      cards_({{"title", [](const ProofCard& row) { return QVariant(row.title); }},
              {"symbol", [](const ProofCard& row) { return QVariant(row.symbol); }},
              {"name", [](const ProofCard& row) { return QVariant(row.name); }},
              {"detail", [](const ProofCard& row) { return QVariant(row.detail); }},
              {"words", [](const ProofCard& row) { return QVariant(row.text); }},
              {"note", [](const ProofCard& row) { return QVariant(row.note); }},
              {"amber", [](const ProofCard& row) { return QVariant(row.amber); }},
              {"members", [](const ProofCard& row) { return QVariant(row.members); }},
              {"actions",
               [](const ProofCard& row) {
                   QVariantList actions;
                   for (const ProofCard::Action action : row.actions) {
                       const bool asks = action == ProofCard::Action::adopt;
                       const bool mends = asks || action == ProofCard::Action::restore ||
                                          action == ProofCard::Action::supply;
                       actions.append(QVariantMap{
                           {"label", actionLabel(row, action)}, {"asks", asks}, {"mends", mends}});
                   }
                   return QVariant(actions);
               }}}),
      logs_({{"line", [](const LogRow& row) { return QVariant(row.line); }},
             {"note", [](const LogRow& row) { return QVariant(row.note); }},
             {"whole", [](const LogRow& row) { return QVariant(row.whole); }}}),
      decisions_({{"title", [](const Decision& row) { return QVariant(row.title); }},
                  {"detail", [](const Decision& row) { return QVariant(row.detail); }},
                  {"symbol", [](const Decision& row) { return QVariant(row.symbol); }},
                  {"result", [](const Decision& row) { return QVariant(row.result); }},
                  {"amber", [](const Decision& row) { return QVariant(row.amber); }},
                  {"kept", [](const Decision& row) { return QVariant(row.kept); }},
                  {"missing", [](const Decision& row) { return QVariant(row.missing); }}}),
      checkpointLogs_({{"digits", [](const CheckpointRow& row) { return QVariant(row.digits); }},
                       {"note", [](const CheckpointRow& row) { return QVariant(row.note); }}}) {
    const auto follow = [this](const auto& property) {
        subscriptions_.push_back(property.observe({}, [this] { show(); }));
    };
    follow(engine.proof);
    follow(engine.unkept);
    follow(engine.unwritten);
    follow(engine.evidenceLooks);
    follow(engine.role);
    follow(engine.roleMap);
    subscriptions_.push_back(engine.checkpoint.observe({}, [this] {
        if (const auto& made = *engine_.checkpoint) {
            showText(made->checkpoint, made->fileName);
            Q_EMIT checkpointMade();
        }
    }));
    show();
}

ProofView::~ProofView() = default;

const ProofComparison& ProofView::comparison() const {
    static const ProofComparison none;
    return *engine_.proof ? **engine_.proof : none;
}

// --- How it stands ---------------------------------------------------------------------------

std::vector<ProofView::Line> ProofView::lines() const {
    std::vector<Line> all;
    if (unwrittenCount() > 0) {
        const UnwrittenRecords::Entry& first = engine_.unwritten->front();
        all.push_back(
            {QStringLiteral("%1 since %2: %3.")
                 .arg(notOnDisk(unwrittenCount()), timeOf(first.since), text(first.reason)),
             Trouble::unwritten});
    }
    std::vector<std::string> proof = troubleLines(comparison());
    const std::vector<std::string> unkept = notKeptLines(*engine_.unkept);
    proof.insert(proof.end(), unkept.begin(), unkept.end());
    for (const std::string& line : proof)
        all.push_back({text(line), Trouble::proof});
    return all;
}

QString ProofView::trouble() const {
    const std::vector<Line> all = lines();
    if (all.empty()) return {};
    const QString& worst = all.front().sentence;
    return all.size() == 1 ? worst
                           : QStringLiteral("%1 And %2 more.").arg(worst).arg(all.size() - 1);
}

ProofView::Trouble ProofView::troubleKind() const {
    const std::vector<Line> all = lines();
    return all.empty() ? Trouble::none : all.front().kind;
}

void ProofView::dismissTrouble() {
    const std::vector<Line> all = lines();
    if (!all.empty()) dismissed_.append(all.front().sentence);
    Q_EMIT changed();
}

QString ProofView::closingQuestion() const {
    if (unwrittenCount() == 0) return {};
    return notOnDisk(unwrittenCount()) + (unwrittenCount() == 1
                                              ? ". It is gone when the window closes."
                                              : ". They are gone when the window closes.");
}

void ProofView::saveUnwritten(const QUrl& folder) {
    const auto saved = engine_.saveUnwritten(
        std::filesystem::path(QFile::encodeName(folder.toLocalFile()).toStdString()));
    savedWords_ = saved ? QStringLiteral("A copy is in %1.").arg(folder.toLocalFile())
                        : "Not saved there: " + text(saved.error().description);
    Q_EMIT changed();
}

ProofView::Standing ProofView::standing() const {
    if (!*engine_.proof) return Standing::comparing;
    const std::vector<Line> all = lines();
    const bool look = std::any_of(all.begin(), all.end(),
                                  [](const Line& line) { return line.kind != Trouble::notice; });
    if (look) return Standing::look;
    return comparison().decisions.empty() ? Standing::empty : Standing::whole;
}

QString ProofView::headline() const {
    const ProofComparison& proof = comparison();
    switch (standing()) {
    case Standing::comparing:
        return QStringLiteral("Comparing the records with the logs…");
    case Standing::empty:
        return QStringLiteral("Nothing is sealed yet, so there is nothing to prove.");
    case Standing::whole:
        return text(wholeSentence(proof));
    case Standing::look:
        break;
    }
    return text(lookSentence(proof, *engine_.unkept));
}

QString ProofView::note() const {
    const ProofComparison& proof = comparison();
    switch (standing()) {
    case Standing::comparing:
    case Standing::empty:
        return {};
    case Standing::whole:
        return QStringLiteral("Every record is as it was sealed, and none is missing. Compared at "
                              "%1.")
            .arg(timeOf(proof.now));
    case Standing::look:
        break;
    }
    QStringList sentences{text(stillHolds(proof))};
    for (const std::string& remark : readinessRemarks(proof))
        sentences.append(sentence(text(remark)));
    return sentences.join(u' ');
}

int ProofView::earlierRecords() const {
    const auto thisRun = engine_.totems->size();
    const std::size_t all = comparison().records;
    return all > thisRun ? static_cast<int>(all - thisRun) : 0;
}

QString ProofView::outputsFolder() const {
    return QFile::decodeName(engine_.outputsDir().c_str());
}

void ProofView::show() {
    cards_.show(proofCards(comparison(), *engine_.unkept, *engine_.unwritten,
                           [this](const std::string& file) { return glanceAt(file); }));
    showLogs();
    showDecisions();
    Q_EMIT changed();
}

void ProofView::showLogs() {
    const ProofComparison& proof = comparison();
    std::vector<LogRow> rows;
    for (const ComparedLog& log : proof.logs) {
        if (!log.belongs && !log.own) continue;
        const QString who = log.account.empty() ? QString() : ", " + text(log.account);
        const QString state = log.damagedLine
                                  ? QStringLiteral("damaged from line %1 on").arg(*log.damagedLine)
                                  : QStringLiteral("whole");
        rows.push_back({QStringLiteral("%1%2: %3 lines, %4")
                            .arg(text(logName(log.computer, log.id)), who)
                            .arg(log.end.lines)
                            .arg(state),
                        log.own ? QStringLiteral("this computer")
                                : "last line " + dayOf(log.lastTs, proof.now),
                        log.whole()});
    }
    logs_.show(std::move(rows));
}

void ProofView::showDecisions() {
    std::vector<Decision> rows;
    const auto& all = comparison().decisions;
    decisionCount_ = static_cast<int>(comparison().counted);
    for (auto each = all.rbegin(); each != all.rend(); ++each) {
        if (each->repeated) continue;
        Decision row = decisionRow(*each);
        if (find_.isEmpty() || holds(row.title, find_) || holds(row.detail, find_)) {
            rows.push_back(std::move(row));
        }
    }
    decisions_.show(std::move(rows));
}

ProofView::Decision ProofView::decisionRow(const LoggedDecision& decision) const {
    using Evidence = LoggedDecision::Evidence;
    Decision row{
        .title = decision.criterion.empty() ? text(decision.approved) : text(decision.criterion),
        .symbol = "link",
        .root = text(decision.evidenceRoot),
        .name = text(decision.evidenceName),
        .kept = decision.evidence == Evidence::kept,
        .missing = decision.evidence == Evidence::notKept || decision.evidence == Evidence::gone};
    const QString who = text(decision.account);
    const QString when = dayOf(decision.time, comparison().now);
    if (decision.evidence == Evidence::none) {
        row.detail = QStringLiteral("sealed %1 by %2").arg(when, who);
        return row;
    }
    const bool device = decision.kind == "control" && decision.byStatement &&
                        decision.evidenceName.starts_with("device-posture-");
    row.symbol = device                 ? "checkmark.circle.fill"
                 : decision.byStatement ? "quote.bubble"
                                        : "doc.text";
    row.detail = decision.byStatement && !device
                     ? QStringLiteral("%1’s own word · sealed %2").arg(who, when)
                     : QStringLiteral("%1 · sealed %2 by %3").arg(row.name, when, who);
    if (decision.withdrawn) row.detail += " · withdrawn";
    if (row.missing) {
        row.symbol = "doc.badge.clock";
        row.amber = true;
        row.detail += " · not kept";
        row.result = decision.reason.empty()
                         ? "Sealed before files were kept. If you have it, its hash will tell."
                         : sentence(text(decision.reason)) + " If you have it, its hash will tell.";
    } else if (decision.evidence == Evidence::arriving) {
        row.detail += " · still arriving";
    }
    const auto& looks = *engine_.evidenceLooks;
    if (const auto look = looks.find(decision.evidenceRoot); look != looks.end()) {
        row.amber = !look->second.same;
        row.result = look->second.same
                         ? QStringLiteral("Verified %1: the kept file is the one that was sealed.")
                               .arg(timeOf(look->second.at))
                         : QStringLiteral("The kept file is not the one that was sealed.");
    }
    return row;
}

std::optional<RecordGlance> ProofView::glanceAt(const std::string& file) const {
    if (!isPlainFileName(file)) return std::nullopt;
    const auto bytes = readFile(engine_.outputsDir() / file, largestGlance);
    if (!bytes) return std::nullopt;
    const auto record = parseJson(*bytes);
    if (!record || !record->is_object()) return std::nullopt;
    const auto shown = [&](const char* key) {
        return text(withControlsShown(member(*record, key).toStdString()));
    };
    return RecordGlance{shown("criterion"), shown("owner"), shown("asOf")};
}

void ProofView::setFind(const QString& words) {
    find_ = words.trimmed();
    showDecisions();
    Q_EMIT changed();
}

// --- What the person may do --------------------------------------------------------------------

bool ProofView::mayVerify() const {
    return engine_.principal->has_value();
}

bool ProofView::mayMend() const {
    return mayVerify() && !engine_.roleReadonly();
}

bool ProofView::mayDecide() const {
    return mayMend() && *engine_.role == "Owner";
}

const ProofView::Decision* ProofView::decisionAt(int row) const {
    const auto& rows = decisions_.rows();
    return row >= 0 && row < decisions_.rowCount() ? &rows[static_cast<std::size_t>(row)] : nullptr;
}

void ProofView::runAction(int row, int action) {
    const auto& cards = cards_.rows();
    if (row < 0 || row >= cards_.rowCount()) return;
    const ProofCard card = cards[static_cast<std::size_t>(row)];
    if (action < 0 || static_cast<std::size_t>(action) >= card.actions.size()) return;
    // Once the click has been dealt with: what asks the person runs an event loop of its own.
    QTimer::singleShot(
        0, this, [this, card, what = card.actions[static_cast<std::size_t>(action)]] {
            switch (what) {
            case ProofCard::Action::restore:
                return engine_.restoreRecord(card.files.front());
            case ProofCard::Action::view: {
                const auto& all = comparison().decisions;
                const auto found = std::find_if(all.rbegin(), all.rend(), [&](const auto& each) {
                    return each.file == card.files.front();
                });
                if (found != all.rend()) openCopy(found->record, card.name);
                return;
            }
            case ProofCard::Action::adopt:
                return engine_.adoptRecords(card.files);
            case ProofCard::Action::openFolder:
                return openFolder();
            case ProofCard::Action::retry:
                return engine_.keepAgain(true);
            case ProofCard::Action::saveElsewhere:
                return saveWanted();
            case ProofCard::Action::supply:
                return engine_.supplyEvidence(card.evidence);
            }
        });
}

void ProofView::viewEvidence(int row) {
    const Decision* decision = decisionAt(row);
    if (decision != nullptr && decision->kept)
        openCopy(decision->root.toStdString(), decision->name);
}

void ProofView::verifyEvidence(int row) {
    const Decision* decision = decisionAt(row);
    if (decision != nullptr) engine_.verifyEvidence(decision->root.toStdString());
}

void ProofView::supplyEvidence(int row) {
    const Decision* decision = decisionAt(row);
    if (decision == nullptr) return;
    QTimer::singleShot(
        0, this, [this, root = decision->root.toStdString()] { engine_.supplyEvidence(root); });
}

void ProofView::openFolder() {
    programs_.open(engine_.outputsDir());
}

void ProofView::openCopy(const std::string& root, const QString& name) {
    // A copy under its own name: by its ending the desktop knows who can show it, and nobody can
    // write through it into the vault.
    const QString folder = shown_.filePath(text(root).left(16));
    QDir().mkpath(folder);
    QString plain = name.isEmpty() ? QStringLiteral("evidence") : name;
    plain.replace(u'/', u'_');
    const QString copy = folder + u'/' + plain;
    const QString kept = QFile::decodeName(engine_.keptFile(root).c_str());
    if (!QFile::exists(copy) && !QFile::copy(kept, copy)) {
        return tell("The kept file cannot be read.");
    }
    QFile::setPermissions(copy, QFileDevice::ReadOwner);
    programs_.open(std::filesystem::path(QFile::encodeName(copy).toStdString()));
}

} // namespace kelvo
