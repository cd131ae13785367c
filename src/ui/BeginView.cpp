#include "ui/BeginView.h"

#include "base/Text.h"
#include "setup/StarterLists.h"

#include <QFile>
#include <QTimer>
#include <QVariantMap>
#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace kelvo {
namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString counted(std::size_t count, const char* one, const char* many) {
    return QString::number(count) + u' ' + QLatin1String(count == 1 ? one : many);
}

/// As a file manager shows it: "812 bytes", "14 kB".
QString sizeWords(std::size_t bytes) {
    constexpr std::size_t kilo = 1000;
    if (bytes < kilo) return counted(bytes, "byte", "bytes");
    return QStringLiteral("%1 kB").arg((bytes + kilo / 2) / kilo);
}

QString summaryOf(const OrganisationList& list, const std::string& graph) {
    const QString counts = counted(list.rows.size(), "criterion", "criteria") +
                           QStringLiteral(", ") + counted(rolesOf(list).size(), "role", "roles") +
                           QStringLiteral(". ");
    const auto document = parseJson(graph);
    const auto mesh = document ? SOC2Mesh::fromJson(*document) : SOC2Mesh();
    if (!mesh) return counts;
    const auto met = static_cast<std::size_t>(mesh->metCount());
    const QString begun =
        met == 0 ? QStringLiteral("No criterion is met yet")
                 : counted(met, "criterion is", "criteria are") + QStringLiteral(" met");
    return counts + begun + QStringLiteral(": readiness begins at ") +
           text(percent(mesh->readiness().value)) + u'.';
}

QString refusalOf(const FileError& error) {
    QString reason = text(error.code == EEXIST ? error.description : reasonInWords(error));
    if (error.code != EEXIST && !reason.isEmpty()) reason[0] = reason[0].toUpper();
    return reason + QStringLiteral(". Nothing was written.");
}

} // namespace

BeginView::BeginView(EngineVM& engine, Surroundings surroundings, QObject* parent)
    : QObject(parent), engine_(engine), surroundings_(std::move(surroundings)),
      people_({{"role", [](const Person& row) { return QVariant(text(row.role)); }},
               {"tasks", [](const Person& row) { return QVariant(row.tasks); }},
               {"readonly", [](const Person& row) { return QVariant(row.readonly); }},
               {"first", [](const Person& row) { return QVariant(row.first); }},
               {"person", [](const Person& row) { return QVariant(text(row.name)); }}}),
      criteria_(
          {{"criterion", [](const OrganisationRow& row) { return QVariant(text(row.id)); }},
           {"title", [](const OrganisationRow& row) { return QVariant(text(row.title)); }},
           {"role", [](const OrganisationRow& row) { return QVariant(text(row.role)); }},
           {"due", [](const OrganisationRow& row) { return QVariant(text(dueWord(row.due))); }},
           {"weight",
            [](const OrganisationRow& row) {
                return QVariant(static_cast<qlonglong>(row.weight));
            }}}),
      subscription_(engine.mesh.observe({}, [this] { refresh(); })) {
    refresh();
}

BeginView::~BeginView() = default;

// --- Where the organisation stands -----------------------------------------------------------

QString BeginView::folder() const {
    return QFile::decodeName(engine_.outputsDir().c_str());
}

void BeginView::refresh() {
    Stage stage = Stage::done;
    QString reason;
    if (!*engine_.mesh) {
        stage = Stage::begin;
        const auto graph = engine_.outputsDir() / OrganisationFiles::graphName;
        std::error_code unknown;
        // A link that leads nowhere is in the way, too.
        if (std::filesystem::exists(std::filesystem::symlink_status(graph, unknown))) {
            stage = Stage::unreadable;
            const auto mesh = SOC2Mesh::load(graph);
            reason = mesh ? QStringLiteral("it came after the start") : text(mesh.error());
        }
    }
    if (stage == stage_ && reason == reason_) return;
    stage_ = stage;
    reason_ = reason;
    Q_EMIT stageChanged();
}

void BeginView::look() {
    if (*engine_.mesh) return;
    if (SOC2Mesh::load(engine_.outputsDir() / OrganisationFiles::graphName)) engine_.readAgain();
    refresh();
}

void BeginView::readAgain() {
    engine_.readAgain();
    refresh();
}

void BeginView::openFolder() {
    surroundings_.programs.open(engine_.outputsDir());
}

void BeginView::openSample() {
    sampleWords_ =
        surroundings_.openSample() ? QString() : QStringLiteral("The sample could not be opened.");
    Q_EMIT sampleChanged();
}

// --- The list --------------------------------------------------------------------------------

void BeginView::setLongList(bool yes) {
    if (yes == longList_) return;
    longList_ = yes;
    Q_EMIT longListChanged();
}

void BeginView::useStarter() {
    take(starterList(longList_ ? Starter::detailed : Starter::brief), true);
}

void BeginView::chooseList(Kind kind) {
    // The chooser runs an event loop of its own.
    QTimer::singleShot(0, this, [this, kind] { takeFile(kind); });
}

void BeginView::takeFile(Kind kind) {
    const bool csv = kind == Kind::csv;
    const auto file =
        surroundings_.filePanel.choose({.prompt = "Open",
                                        .message = csv ? "Open a CSV" : "Open a catalog",
                                        .allowed = {csv ? ContentType::csv : ContentType::json}});
    if (!file) return;
    auto list = readListFile(*file, csv ? ListKind::csv : ListKind::catalog);
    if (list) return take(std::move(*list), false);
    QStringList faults;
    for (const ListFault& fault : list.error())
        faults.append(text(sentence(fault, shownFileName(*file))));
    setFaults(kind, faults);
}

void BeginView::setFaults(Kind kind, const QStringList& faults) {
    csvFaults_ = kind == Kind::csv ? faults : QStringList();
    catalogFaults_ = kind == Kind::catalog ? faults : QStringList();
    Q_EMIT faultsChanged();
}

void BeginView::take(OrganisationList list, bool fromStarter) {
    setFaults(Kind::csv, {});
    list_ = std::move(list);
    fromStarter_ = fromStarter;
    if (!fromStarter) answers_.premises = answers_.devices = true;
    if (answers_.people.empty() && !surroundings_.account.empty())
        answers_.people[std::string(ownerRole)] = {surroundings_.account};
    showPeople();
    Q_EMIT answersChanged();
    Q_EMIT listTaken();
}

// --- The answers -----------------------------------------------------------------------------

QString BeginView::organisation() const {
    return text(answers_.organisation);
}

void BeginView::setOrganisation(const QString& name) {
    if (name == organisation()) return;
    answers_.organisation = name.toStdString();
    Q_EMIT answersChanged();
}

bool BeginView::named() const {
    return !asOneLine(answers_.organisation).empty();
}

void BeginView::setPremises(bool yes) {
    answers_.premises = yes;
    showPeople();
    Q_EMIT answersChanged();
}

void BeginView::setDevices(bool yes) {
    answers_.devices = yes;
    showPeople();
    Q_EMIT answersChanged();
}

void BeginView::showPeople() {
    std::vector<Person> rows;
    for (const ListRole& role : rolesOf(answered(list_, answers_))) {
        std::vector<std::string> names = answers_.people[role.name];
        if (names.empty()) names.emplace_back();
        for (std::size_t i = 0; i < names.size(); ++i)
            rows.push_back({role.name, role.tasks, role.readonly, i == 0, names[i]});
    }
    people_.show(std::move(rows));
}

void BeginView::keepPeople() {
    for (const Person& each : people_.rows())
        answers_.people[each.role].clear();
    for (const Person& each : people_.rows())
        answers_.people[each.role].push_back(each.name);
}

void BeginView::setPerson(int row, const QString& name) {
    std::vector<Person> rows = people_.rows();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) return;
    rows[static_cast<std::size_t>(row)].name = name.toStdString();
    people_.show(std::move(rows));
    keepPeople();
}

void BeginView::addPerson(int row) {
    const std::vector<Person>& rows = people_.rows();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) return;
    answers_.people[rows[static_cast<std::size_t>(row)].role].emplace_back();
    showPeople();
}

// --- The files -------------------------------------------------------------------------------

bool BeginView::prepare() {
    if (!named()) return false;
    OrganisationList list = answered(list_, answers_);
    const auto files = composed(list, answers_);
    refusal_ = files
                   ? QString()
                   : text(files.error().front().reason) + QStringLiteral(". Nothing was written.");
    files_ = files.value_or(OrganisationFiles());
    summary_ = summaryOf(list, files_.graph);
    criteria_.show(std::move(list.rows));
    Q_EMIT previewChanged();
    return true;
}

QVariantList BeginView::files() const {
    const auto row = [](const char* name, const char* what, const std::string& bytes) {
        return QVariantMap{{"name", name},
                           {"what", what},
                           {"size", QStringLiteral("new, ") + sizeWords(bytes.size())}};
    };
    return {row(OrganisationFiles::graphName, "the criteria and their weights", files_.graph),
            row(OrganisationFiles::rolesName, "the roles, their people and tasks", files_.roles)};
}

bool BeginView::folderIsNew() const {
    std::error_code unknown;
    return !std::filesystem::exists(engine_.outputsDir(), unknown);
}

void BeginView::write() {
    if (files_.graph.empty()) return;
    const auto written = writeOrganisation(engine_.outputsDir(), files_);
    refusal_ = written ? QString() : refusalOf(written.error());
    Q_EMIT previewChanged();
    if (!written) return;
    // The event log and what this computer knows of the proof are kept here, from now on.
    std::error_code ignored;
    std::filesystem::create_directories(engine_.chatURL().parent_path(), ignored);
    engine_.readAgain();
}

} // namespace kelvo
