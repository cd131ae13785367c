#include "ui/EngineView.h"

#include "base/Text.h"

#include <QTimer>
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace kelvo {
namespace {

/// What is asked about a draft at once; its count tells of all places.
constexpr qsizetype mostQuestions = 8;

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString textOrEmpty(const std::optional<std::string>& utf8) {
    return utf8 ? text(*utf8) : QString();
}

QStringList list(const std::vector<std::string>& items) {
    QStringList shown;
    shown.reserve(static_cast<qsizetype>(items.size()));
    for (const std::string& item : items)
        shown.append(text(item));
    return shown;
}

/// How the button of a card shows what it does.
struct ActFace {
    QString label{};
    QString symbol{};
};

ActFace faceOf(const std::optional<Act>& action) {
    if (!action) return {};
    switch (action->kind) {
    case Act::Kind::closeGap:
        return {QStringLiteral("Close with evidence"), QStringLiteral("paperclip")};
    case Act::Kind::generate:
        return {QStringLiteral("Generate policy"), QStringLiteral("doc.badge.gearshape")};
    case Act::Kind::play:
        return {QStringLiteral("Fire (Play)"), QStringLiteral("play.fill")};
    case Act::Kind::pause:
        return {QStringLiteral("Checkpoint"), QStringLiteral("pause.fill")};
    case Act::Kind::throttle:
        return {QStringLiteral("Reduce exposure"), QStringLiteral("arrow.down.right.circle")};
    case Act::Kind::bond:
        return {QStringLiteral("Approve & Save"), QStringLiteral("touchid")};
    case Act::Kind::kyc:
        return {QStringLiteral("Verify identity"), QStringLiteral("person.badge.shield.checkmark")};
    case Act::Kind::snapshot:
        return {QStringLiteral("Refresh OS snapshot"), QStringLiteral("checkmark.shield")};
    }
    return {};
}

QString chainRow(const Totem& totem) {
    return text("[" + std::to_string(totem.index) + "] " + totem.blockHash.substr(0, 10) + "… " +
                totem.title);
}

bool met(const SOC2Mesh::Node& node) {
    return node.g >= 1.0;
}

} // namespace

EngineView::EngineView(EngineVM& engine, QObject* parent)
    : QObject(parent), engine_(engine),
      totems_({{"line", [](const Totem& row) { return QVariant(chainRow(row)); }},
               {"blockHash", [](const Totem& row) { return QVariant(text(row.blockHash)); }},
               {"asOf", [](const Totem& row) { return QVariant(text(row.asOf)); }},
               {"firedBy", [](const Totem& row) { return QVariant(text(row.firedBy)); }}}),
      citations_({{"claim", [](const Citation& row) { return QVariant(text(row.claim)); }},
                  {"source", [](const Citation& row) { return QVariant(text(row.source)); }},
                  {"asOf", [](const Citation& row) { return QVariant(text(row.asOf)); }}}),
      chat_({{"speaker", [](const ChatMsg& row) { return QVariant(text(row.role)); }},
             {"line", [](const ChatMsg& row) { return QVariant(text(row.text)); }}}),
      criteria_(
          {{"criterion", [](const SOC2Mesh::Node& row) { return QVariant(text(row.id)); }},
           {"met", [](const SOC2Mesh::Node& row) { return QVariant(met(row)); }},
           {"gap",
            [](const SOC2Mesh::Node& row) { return QVariant(text(SOC2Mesh::gapText(row))); }}}),
      roleControls_(
          {{"criterion", [](const RoleTask& row) { return QVariant(text(row.control.criterion)); }},
           {"task", [](const RoleTask& row) { return QVariant(text(row.control.task)); }},
           {"close", [](const RoleTask& row) { return QVariant(text(row.control.close)); }},
           {"closed", [](const RoleTask& row) { return QVariant(row.closed); }}}),
      osFacts_({{"key", [](const OSFact& row) { return QVariant(text(row.key)); }},
                {"value", [](const OSFact& row) { return QVariant(text(row.value)); }},
                {"ok", [](const OSFact& row) { return QVariant(row.ok); }}}) {
    forward(engine.equations, &EngineView::equationsChanged);
    forward(engine.stateLine, &EngineView::stateLineChanged);
    forward(engine.running, &EngineView::runningChanged);
    forward(engine.t, &EngineView::tChanged);
    forward(engine.risk, &EngineView::riskChanged);
    forward(engine.rate, &EngineView::rateChanged);
    forward(engine.status, &EngineView::statusChanged);
    forward(engine.pending, &EngineView::pendingChanged);
    forward(engine.humanNBA, &EngineView::nextChanged);
    forward(engine.principal, &EngineView::identityChanged);
    forward(engine.role, &EngineView::identityChanged);
    forward(engine.roleMap, &EngineView::availableRolesChanged);
    forward(engine.readiness, &EngineView::readinessChanged, &EngineView::roleWorkChanged);
    forward(engine.evidenceProposal, &EngineView::proposalChanged);
    forward(engine.generatedDoc, &EngineView::draftChanged);
    forward(engine.assistantBusy, &EngineView::assistantBusyChanged);
    forward(engine.proposedAction, &EngineView::proposedActionChanged);
    forward(engine.progress, &EngineView::progressChanged);
    forward(engine.modelWork, &EngineView::progressChanged);

    feed(engine.totems, totems_);
    forward(engine.totems, &EngineView::totemsChanged);
    feed(engine.citations, citations_);
    feed(engine.chat, chat_);
    feed(engine.osFacts, osFacts_);

    const auto showMesh = [this] {
        criteria_.show(*engine_.mesh ? (*engine_.mesh)->nodes : std::vector<SOC2Mesh::Node>{});
        Q_EMIT meshChanged();
        showRoleWork();
    };
    subscriptions_.push_back(engine.mesh.observe({}, showMesh));
    subscriptions_.push_back(engine.role.observe({}, [this] { showRoleWork(); }));
    subscriptions_.push_back(engine.roleMap.observe({}, [this] { showRoleWork(); }));
    showMesh();
}

EngineView::~EngineView() = default;

template <class T, class... Signals>
void EngineView::forward(const Published<T>& property, Signals... changed) {
    subscriptions_.push_back(
        property.observe({}, [this, changed...] { ((this->*changed)(), ...); }));
}

template <class T, class Model>
void EngineView::feed(const Published<T>& property, Model& model) {
    const auto show = [&property, &model] { model.show(*property); };
    subscriptions_.push_back(property.observe({}, show));
    show();
}

void EngineView::showRoleWork() {
    std::vector<RoleTask> tasks;
    for (RoleMap::Control& control : engine_.roleControls()) {
        const bool closed = engine_.isRoleControlClosed(control);
        tasks.push_back({std::move(control), closed});
    }
    roleControls_.show(std::move(tasks));
    Q_EMIT roleWorkChanged();
}

void EngineView::later(std::function<void()> operation) {
    QTimer::singleShot(0, this, std::move(operation));
}

// --- State -----------------------------------------------------------------------------------

QString EngineView::equations() const {
    return text(*engine_.equations);
}

QString EngineView::stateLine() const {
    return text(*engine_.stateLine);
}

QString EngineView::t() const {
    return text(fixed(*engine_.t, 3));
}

QString EngineView::risk() const {
    return text(fixed(*engine_.risk, 4));
}

QString EngineView::status() const {
    return text(*engine_.status);
}

QAbstractListModel* EngineView::totems() {
    return &totems_;
}

QAbstractListModel* EngineView::citations() {
    return &citations_;
}

QAbstractListModel* EngineView::chat() {
    return &chat_;
}

QAbstractListModel* EngineView::criteria() {
    return &criteria_;
}

QAbstractListModel* EngineView::roleControls() {
    return &roleControls_;
}

QAbstractListModel* EngineView::osFacts() {
    return &osFacts_;
}

QString EngineView::nextTitle() const {
    return text(engine_.humanNBA->title);
}

QString EngineView::nextDetail() const {
    return text(engine_.humanNBA->detail);
}

QString EngineView::nextAction() const {
    return faceOf(engine_.humanNBA->action).label;
}

QString EngineView::nextSymbol() const {
    return faceOf(engine_.humanNBA->action).symbol;
}

QString EngineView::principal() const {
    return textOrEmpty(*engine_.principal);
}

QString EngineView::role() const {
    return textOrEmpty(*engine_.role);
}

QStringList EngineView::availableRoles() const {
    return list(engine_.offeredRoles());
}

QString EngineView::whyNoRole() const {
    return text(engine_.whyNoRole());
}

bool EngineView::mayTakeRole() const {
    return engine_.availableRoles().empty() || !engine_.offeredRoles().empty();
}

EngineView::RoleWork EngineView::roleWork() const {
    if (!verified() || !*engine_.role || **engine_.role == "Owner" || controlCount() == 0) {
        return RoleWork::evidence;
    }
    return engine_.roleReadonly() ? RoleWork::audit : RoleWork::responsibilities;
}

QString EngineView::roleReadinessText() const {
    return text(fixed(roleReadiness() * 100, 0) + "%");
}

int EngineView::closedControls() const {
    const auto& tasks = roleControls_.rows();
    return static_cast<int>(std::count_if(tasks.begin(), tasks.end(),
                                          [](const RoleTask& task) { return task.closed; }));
}

int EngineView::controlCount() const {
    return roleControls_.rowCount();
}

QString EngineView::readinessText() const {
    return text(percent(*engine_.readiness));
}

QStringList EngineView::openGaps() const {
    QStringList ids;
    if (!*engine_.mesh) return ids;
    for (const SOC2Mesh::Node& node : (*engine_.mesh)->gaps())
        ids.append(text(node.id));
    return ids;
}

QString EngineView::proposalName() const {
    return hasProposal() ? text((*engine_.evidenceProposal)->name) : QString();
}

QString EngineView::proposalSummary() const {
    return hasProposal() ? text((*engine_.evidenceProposal)->summary) : QString();
}

QStringList EngineView::proposalCriteria() const {
    return hasProposal() ? list((*engine_.evidenceProposal)->criteria) : QStringList();
}

QString EngineView::draftCriterion() const {
    return hasDraft() ? text((*engine_.generatedDoc)->criterion) : QString();
}

QString EngineView::draftText() const {
    return hasDraft() ? text((*engine_.generatedDoc)->text) : QString();
}

std::vector<WordingPlace> EngineView::wordingOfDraft() const {
    if (!hasDraft()) return {};
    const GeneratedDoc& draft = **engine_.generatedDoc;
    std::string facts = draft.criterion;
    if (*engine_.mesh) {
        for (const SOC2Mesh::Node& node : (*engine_.mesh)->nodes) {
            if (node.id == draft.criterion) facts += " " + node.evidence;
        }
    }
    return wordingPlaces(draft.text, {.facts = facts,
                                      .drafted = draft.text,
                                      .day = std::chrono::floor<std::chrono::days>(
                                          std::chrono::system_clock::now())});
}

QString EngineView::draftPlaces() const {
    return hasDraft() ? text(wordingCount(wordingOfDraft())) : QString();
}

QStringList EngineView::draftQuestions() const {
    QStringList questions;
    for (const WordingPlace& place : wordingOfDraft()) {
        if (questions.size() == mostQuestions) break;
        const std::string words = (*engine_.generatedDoc)->text.substr(place.start, place.length);
        questions.append(
            QStringLiteral("“%1”: %2").arg(text(words), text(wordingQuestion(place.kind))));
    }
    return questions;
}

QString EngineView::proposedActionName() const {
    return textOrEmpty(engine_.proposedActionName());
}

QString EngineView::progressTitle() const {
    if (*engine_.progress) return text((*engine_.progress)->title);
    const std::vector<ModelWork>& work = *engine_.modelWork;
    if (work.empty()) return {};
    const QString oldest = text(work.front().title);
    return work.size() == 1 ? oldest
                            : QStringLiteral("%1 and %2 more").arg(oldest).arg(work.size() - 1);
}

double EngineView::progressShare() const {
    return *engine_.progress ? (*engine_.progress)->share : -1;
}

void EngineView::setModelLine(const QString& line) {
    if (line == modelLine_) return;
    modelLine_ = line;
    Q_EMIT modelLineChanged();
}

// --- Operations ------------------------------------------------------------------------------

void EngineView::play() {
    engine_.play();
}

void EngineView::pause() {
    engine_.pause();
}

void EngineView::bondCollapse() {
    later([this] { engine_.bondCollapse(); });
}

void EngineView::runNext() {
    // What the button said when it was pressed, not what the card says by the time it runs.
    if (const auto action = engine_.humanNBA->action) {
        later([this, act = *action] { engine_.run(act); });
    }
}

void EngineView::leaveIdentity() {
    later([this] { engine_.leaveIdentity(); });
}

void EngineView::verifyKYC(const QString& role) {
    later([this, name = role.toStdString()] { engine_.verifyKYC(name); });
}

void EngineView::closeRoleControl(int row) {
    const auto& tasks = roleControls_.rows();
    if (row < 0 || row >= controlCount()) return;
    later([this, control = tasks[static_cast<std::size_t>(row)].control] {
        engine_.closeRoleControl(control);
    });
}

void EngineView::generatePolicy(const QString& criterion) {
    engine_.generatePolicy(criterion.toStdString());
}

void EngineView::approveGenerated() {
    later([this] { engine_.approveGenerated(); });
}

void EngineView::discardGenerated() {
    engine_.discardGenerated();
}

void EngineView::addEvidence() {
    later([this] { engine_.addEvidence(); });
}

void EngineView::confirmEvidence(const QStringList& criteria) {
    std::vector<std::string> ids;
    for (const QString& id : criteria)
        ids.push_back(id.toStdString());
    later([this, ids = std::move(ids)] { engine_.confirmEvidence(ids); });
}

void EngineView::snapshotOS() {
    later([this] { engine_.snapshotOS(); });
}

void EngineView::askAssistant(const QString& question) {
    engine_.askAssistant(question.toStdString());
}

void EngineView::runProposed() {
    later([this] { engine_.runProposed(); });
}

void EngineView::cancelModelWork() {
    engine_.cancelModelWork();
}

} // namespace kelvo
