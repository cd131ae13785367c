#include "ui/AuditView.h"

#include "base/Text.h"
#include "proof/Decisions.h"

#include <QClipboard>
#include <QDate>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <algorithm>
#include <array>
#include <utility>

namespace kelvo {
namespace {

constexpr QLatin1StringView dayForm("A day is written as year-month-day, for instance 2026-01-31.");
constexpr int progressEveryMs = 200;

constexpr std::array documentKinds = {ReportDocument::Kind::description,
                                      ReportDocument::Kind::assertion, ReportDocument::Kind::users,
                                      ReportDocument::Kind::suppliers};

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString capital(QString words) {
    if (!words.isEmpty()) words[0] = words[0].toUpper();
    return words;
}

QString dayInWindow(Day day, bool withYear) {
    const QDate date = QDate::fromString(text(isoDay(day)), Qt::ISODate);
    return QLocale(QLocale::English)
        .toString(date, withYear ? QStringLiteral("d MMMM yyyy") : QStringLiteral("d MMMM"));
}

int yearOf(Day day) {
    return static_cast<int>(std::chrono::year_month_day(day).year());
}

QString counted(std::int64_t count, const char* one, const char* many) {
    return QStringLiteral("%1 %2").arg(count).arg(count == 1 ? one : many);
}

QString cellOf(DueInterval::State state) {
    switch (state) {
    case DueInterval::State::notOver:
        return QStringLiteral("notOver");
    case DueInterval::State::missed:
        return QStringLiteral("missed");
    case DueInterval::State::byWord:
        return QStringLiteral("byWord");
    case DueInterval::State::met:
        return QStringLiteral("met");
    }
    return {};
}

QString frequencyInWords(Frequency frequency) {
    switch (frequency) {
    case Frequency::once:
        return QStringLiteral("once");
    case Frequency::annual:
        return QStringLiteral("yearly");
    case Frequency::semiannual:
        return QStringLiteral("half-yearly");
    case Frequency::quarterly:
        return QStringLiteral("quarterly");
    case Frequency::monthly:
        return QStringLiteral("monthly");
    case Frequency::weekly:
        return QStringLiteral("weekly");
    case Frequency::daily:
        return QStringLiteral("daily");
    case Frequency::event:
        return QStringLiteral("each time");
    }
    return {};
}

} // namespace

AuditView::AuditView(EngineVM& engine, OtherPrograms& programs, QObject* parent)
    : QObject(parent), engine_(engine), programs_(programs),
      criteria_({{"criterion", [](const Row& row) { return QVariant(row.id); }},
                 {"title", [](const Row& row) { return QVariant(row.title); }},
                 {"standing", [](const Row& row) { return QVariant(row.standing); }},
                 {"words", [](const Row& row) { return QVariant(row.words); }},
                 {"detail", [](const Row& row) { return QVariant(row.detail); }},
                 {"evidence", [](const Row& row) { return QVariant(row.evidence); }},
                 {"cells", [](const Row& row) { return QVariant(row.cells); }}}) {
    subscriptions_.push_back(engine.proof.observe({}, [this] { show(); }));
    subscriptions_.push_back(engine.role.observe({}, [this] { Q_EMIT changed(); }));
    subscriptions_.push_back(engine.package.observe({}, [this] {
        if (stage() == Stage::writing)
            progress_.start();
        else
            progress_.stop();
        Q_EMIT packageChanged();
    }));
    progress_.setInterval(progressEveryMs);
    connect(&progress_, &QTimer::timeout, this, &AuditView::shareChanged);
    show();
}

const ProofComparison& AuditView::comparison() const {
    static const ProofComparison none;
    return *engine_.proof ? **engine_.proof : none;
}

const ProofStanding& AuditView::standing() const {
    return comparison().standing;
}

bool AuditView::mayLook() const {
    return engine_.principal->has_value();
}

bool AuditView::hasPeriod() const {
    return standing().set.has_value();
}

QString AuditView::periodWords() const {
    if (!hasPeriod()) {
        return QStringLiteral(
            "Set the audit period first; until then this shows the last twelve months.");
    }
    const AuditPeriod& period = standing().period;
    if (!period.type2) {
        return QStringLiteral("SOC 2 Type I, as of %1.").arg(dayInWindow(period.from, true));
    }
    const bool sameYear = yearOf(period.from) == yearOf(period.to);
    const QString days =
        QStringLiteral("SOC 2 Type II, %1 to %2.")
            .arg(dayInWindow(period.from, !sameYear), dayInWindow(period.to, true));
    if (period.to <= standing().today) return days;
    return days +
           QStringLiteral(" Counted up to today, %1.")
               .arg(dayInWindow(standing().today, yearOf(standing().today) != yearOf(period.to)));
}

QString AuditView::periodFrom() const {
    return text(isoDay(standing().period.from));
}

QString AuditView::periodTo() const {
    return text(isoDay(standing().period.to));
}

QString AuditView::firm() const {
    return hasPeriod() ? text(standing().period.firm) : QString();
}

QString AuditView::headline() const {
    const auto& standings = standing().standings;
    if (standings.empty()) {
        return QStringLiteral(
            "Nothing is sealed yet. Close a criterion, and its evidence stands here.");
    }
    const auto carried = std::count_if(standings.begin(), standings.end(), [](const auto& each) {
        return each.standing == Standing::supported || each.standing == Standing::attested;
    });
    if (carried == static_cast<std::ptrdiff_t>(standings.size())) {
        return QStringLiteral("Every criterion carries evidence for every time that was due.");
    }
    return QStringLiteral("%1 of %2 criteria carry evidence for every time that was due.")
        .arg(carried)
        .arg(standings.size());
}

QString AuditView::figures() const {
    return QStringLiteral("Readiness %1 · supported %2")
        .arg(text(percent(*engine_.readiness)), text(percent(standing().supported)));
}

AuditView::Row AuditView::rowOf(std::size_t place) const {
    const Criterion& criterion = standing().criteria.list[place];
    const CriterionStanding& found = standing().standings[place];
    Row row;
    row.id = text(criterion.id);
    row.title = text(criterion.title);
    row.standing = text(nameOf(found.standing));
    row.words = capital(row.standing);
    if (found.due > 1) {
        row.words += QStringLiteral(" %1 of %2").arg(found.present).arg(found.due);
    }
    row.detail = capital(frequencyInWords(criterion.frequency));
    if (found.ranBefore) row.detail += QStringLiteral(" · ran before the period");
    if (!found.closings.empty()) {
        if (const auto late = found.closings.back().recordedLate()) {
            row.detail += QStringLiteral(" · recorded %1 days later").arg(*late);
        }
    }
    if (const LoggedDecision* document = documentOf(place)) {
        row.evidence = text(document->evidenceName);
    }
    for (const DueInterval& each : found.intervals)
        row.cells.append(cellOf(each.state));
    return row;
}

const LoggedDecision* AuditView::documentOf(std::size_t place) const {
    const LoggedDecision* last = nullptr;
    for (const Closing& each : standing().standings[place].closings) {
        const LoggedDecision& decision = comparison().decisions[each.decision];
        if (!each.withdrawn && !decision.byStatement) last = &decision;
    }
    return last;
}

void AuditView::show() {
    std::vector<Row> rows;
    for (std::size_t i = 0; i < standing().standings.size(); ++i)
        rows.push_back(rowOf(i));
    criteria_.show(std::move(rows));
    Q_EMIT changed();
}

QVariantList AuditView::documents() const {
    QVariantList rows;
    for (const ReportDocument::Kind kind : documentKinds) {
        QString name;
        for (const LoggedDecision& each : comparison().decisions) {
            const auto* document = furtherSeal<ReportDocument>(each);
            if (document != nullptr && document->kind == kind) name = text(document->name);
        }
        rows.append(QVariantMap{{"title", capital(text(titleOf(kind)))}, {"name", name}});
    }
    return rows;
}

QString AuditView::contents() const {
    const auto& decisions = comparison().decisions;
    const auto evidence = std::count_if(decisions.begin(), decisions.end(), [](const auto& each) {
        return each.evidence == LoggedDecision::Evidence::kept;
    });
    return QStringLiteral("%1, %2, and the logs of %3.")
        .arg(counted(comparison().counted, "decision", "decisions"),
             counted(evidence, "piece of evidence", "pieces of evidence"),
             counted(comparison().computers, "computer", "computers"));
}

AuditView::Stage AuditView::stage() const {
    if (!*engine_.package) return Stage::none;
    switch ((*engine_.package)->stage) {
    case PackageState::Stage::reading:
        return Stage::reading;
    case PackageState::Stage::refused:
        return Stage::refused;
    case PackageState::Stage::writing:
        return Stage::writing;
    case PackageState::Stage::written:
        return Stage::written;
    case PackageState::Stage::failed:
        return Stage::failed;
    }
    return Stage::none;
}

QString AuditView::recipient() const {
    return *engine_.package ? text((*engine_.package)->recipient) : QString();
}

QStringList AuditView::reasons() const {
    QStringList sentences;
    if (!*engine_.package) return sentences;
    for (const std::string& each : (*engine_.package)->reasons)
        sentences.append(text(each));
    return sentences;
}

QString AuditView::packageName() const {
    return *engine_.package ? QFile::decodeName((*engine_.package)->folder.filename().c_str())
                            : QString();
}

QString AuditView::packageFolder() const {
    return *engine_.package ? QFile::decodeName((*engine_.package)->destination.c_str())
                            : QString();
}

QString AuditView::number() const {
    if (!*engine_.package) return {};
    QString grouped;
    const std::string& digits = (*engine_.package)->number;
    for (std::size_t i = 0; i < digits.size(); i += 8) {
        if (i > 0) grouped += i % 32 == 0 ? u'\n' : u' ';
        grouped += text(digits.substr(i, 8));
    }
    return grouped;
}

QString AuditView::setPeriod(bool type2, const QString& from, const QString& to,
                             const QString& firm) {
    const auto first = parseIsoDay(from.trimmed().toStdString());
    const auto last = type2 ? parseIsoDay(to.trimmed().toStdString()) : first;
    if (!first || !last) {
        return QString(dayForm);
    }
    if (*last < *first) return QStringLiteral("The period ends before it begins.");
    AuditPeriod period{.type2 = type2,
                       .from = *first,
                       .to = *last,
                       .categories = {"Security"},
                       .firm = firm.trimmed().toStdString()};
    QTimer::singleShot(0, this, [this, period = std::move(period)] { engine_.setPeriod(period); });
    return {};
}

QString AuditView::setDates(int row, const QString& from, const QString& to,
                            const QString& producedBy, const QString& source,
                            const QString& population) {
    const auto place = static_cast<std::size_t>(row);
    const LoggedDecision* document =
        row >= 0 && place < standing().standings.size() ? documentOf(place) : nullptr;
    if (document == nullptr) return QStringLiteral("There is no document to date.");
    const auto first = parseIsoDay(from.trimmed().toStdString());
    const auto last = parseIsoDay(to.trimmed().toStdString());
    if (!first || !last) return QString(dayForm);
    if (*last < *first) return QStringLiteral("The last day is before the first.");
    if (*last > standing().today) {
        return QStringLiteral("Days that are still to come cannot be covered: the whole item would "
                              "count for nothing.");
    }
    const EvidenceItem item{.root = document->evidenceRoot,
                            .name = document->evidenceName,
                            .coversFrom = isoDay(*first),
                            .coversTo = isoDay(*last),
                            .producedAt = "",
                            .producedBy = producedBy.trimmed().toStdString(),
                            .source = source.trimmed().toStdString(),
                            .parameters = "",
                            .population = population.trimmed().toStdString()};
    QTimer::singleShot(0, this, [this, item] { engine_.recordEvidenceDates({item}); });
    return {};
}

void AuditView::addDocument(int kind) {
    if (kind < 0 || static_cast<std::size_t>(kind) >= documentKinds.size()) return;
    QTimer::singleShot(0, this, [this, kind] {
        engine_.recordDocument(documentKinds[static_cast<std::size_t>(kind)]);
    });
}

void AuditView::handOver(const QString& recipient, const QUrl& folder, bool anyway) {
    const std::string name = recipient.trimmed().toStdString();
    const std::filesystem::path destination = QFile::encodeName(folder.toLocalFile()).toStdString();
    QTimer::singleShot(0, this, [this, name, destination, anyway] {
        engine_.handOver(name, destination, anyway);
    });
}

void AuditView::stop() {
    engine_.stopPackage();
}

void AuditView::openPackage() {
    if (*engine_.package) programs_.open((*engine_.package)->folder);
}

void AuditView::copyNumber() {
    if (*engine_.package) {
        QGuiApplication::clipboard()->setText(text((*engine_.package)->number));
    }
}

} // namespace kelvo
