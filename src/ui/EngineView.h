#pragma once

#include "engine/EngineVM.h"
#include "intelligence/WordingCheck.h"
#include "ui/ListModel.h"

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

namespace kelvo {

/// The engine as the window sees it: published scalars as properties, published lists as models,
/// operations as invokables. It keeps nothing but the rows that its models have told their views,
/// and the line about the model that the program gave it.
///
/// An operation that asks the person something begins once the click or key that called it has been
/// dealt with, because its prompt runs an event loop of its own.
class EngineView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program hands its one engine to the window.")

    Q_PROPERTY(QString equations READ equations NOTIFY equationsChanged)
    Q_PROPERTY(QString stateLine READ stateLine NOTIFY stateLineChanged)
    Q_PROPERTY(bool running READ running NOTIFY runningChanged)
    Q_PROPERTY(QString t READ t NOTIFY tChanged)
    Q_PROPERTY(QString risk READ risk NOTIFY riskChanged)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(double rate READ rate NOTIFY rateChanged)
    Q_PROPERTY(double rateLimit READ rateThreshold CONSTANT)
    Q_PROPERTY(bool pending READ pending NOTIFY pendingChanged)
    Q_PROPERTY(int totemCount READ totemCount NOTIFY totemsChanged)
    Q_PROPERTY(QAbstractListModel* totems READ totems CONSTANT)
    Q_PROPERTY(QAbstractListModel* citations READ citations CONSTANT)
    Q_PROPERTY(QAbstractListModel* chat READ chat CONSTANT)
    Q_PROPERTY(QAbstractListModel* criteria READ criteria CONSTANT)
    Q_PROPERTY(QAbstractListModel* roleControls READ roleControls CONSTANT)
    Q_PROPERTY(QAbstractListModel* osFacts READ osFacts CONSTANT)

    Q_PROPERTY(QString nextTitle READ nextTitle NOTIFY nextChanged)
    Q_PROPERTY(QString nextDetail READ nextDetail NOTIFY nextChanged)
    Q_PROPERTY(QString nextAction READ nextAction NOTIFY nextChanged)
    Q_PROPERTY(QString nextSymbol READ nextSymbol NOTIFY nextChanged)

    Q_PROPERTY(bool verified READ verified NOTIFY identityChanged)
    Q_PROPERTY(QString principal READ principal NOTIFY identityChanged)
    Q_PROPERTY(QString role READ role NOTIFY identityChanged)
    Q_PROPERTY(QStringList availableRoles READ availableRoles NOTIFY availableRolesChanged)
    Q_PROPERTY(QString whyNoRole READ whyNoRole NOTIFY availableRolesChanged)
    Q_PROPERTY(bool mayTakeRole READ mayTakeRole NOTIFY availableRolesChanged)
    Q_PROPERTY(RoleWork roleWork READ roleWork NOTIFY roleWorkChanged)
    Q_PROPERTY(double roleReadiness READ roleReadiness NOTIFY roleWorkChanged)
    Q_PROPERTY(QString roleReadinessText READ roleReadinessText NOTIFY roleWorkChanged)
    Q_PROPERTY(int closedControls READ closedControls NOTIFY roleWorkChanged)
    Q_PROPERTY(int controlCount READ controlCount NOTIFY roleWorkChanged)

    Q_PROPERTY(bool hasMesh READ hasMesh NOTIFY meshChanged)
    Q_PROPERTY(double readiness READ readiness NOTIFY readinessChanged)
    Q_PROPERTY(QString readinessText READ readinessText NOTIFY readinessChanged)
    Q_PROPERTY(int metCount READ metCount NOTIFY meshChanged)
    Q_PROPERTY(QStringList openGaps READ openGaps NOTIFY meshChanged)

    Q_PROPERTY(bool hasProposal READ hasProposal NOTIFY proposalChanged)
    Q_PROPERTY(QString proposalName READ proposalName NOTIFY proposalChanged)
    Q_PROPERTY(QString proposalSummary READ proposalSummary NOTIFY proposalChanged)
    Q_PROPERTY(QStringList proposalCriteria READ proposalCriteria NOTIFY proposalChanged)
    Q_PROPERTY(bool hasDraft READ hasDraft NOTIFY draftChanged)
    Q_PROPERTY(QString draftCriterion READ draftCriterion NOTIFY draftChanged)
    Q_PROPERTY(QString draftText READ draftText NOTIFY draftChanged)
    /// "4 empty places, 2 vague"; that none was found.
    Q_PROPERTY(QString draftPlaces READ draftPlaces NOTIFY draftChanged)
    /// The first eight such places, each with its question: "“periodically”: how often?".
    Q_PROPERTY(QStringList draftQuestions READ draftQuestions NOTIFY draftChanged)

    Q_PROPERTY(bool assistantBusy READ assistantBusy NOTIFY assistantBusyChanged)
    Q_PROPERTY(QString proposedActionName READ proposedActionName NOTIFY proposedActionChanged)
    Q_PROPERTY(QString progressTitle READ progressTitle NOTIFY progressChanged)
    Q_PROPERTY(double progressShare READ progressShare NOTIFY progressChanged)
    Q_PROPERTY(bool modelAtWork READ modelAtWork NOTIFY progressChanged)
    Q_PROPERTY(QString modelLine READ modelLine NOTIFY modelLineChanged)

public:
    /// What the person's role has them do in the window.
    enum class RoleWork {
        evidence,         ///< upload evidence and, with a mesh, see every criterion
        responsibilities, ///< complete the role's own tasks
        audit             ///< look, change nothing
    };
    Q_ENUM(RoleWork)

    /// The engine must outlive the view.
    explicit EngineView(EngineVM& engine, QObject* parent = nullptr);
    ~EngineView() override;

    const EngineVM& engine() const { return engine_; }

    QString equations() const;
    QString stateLine() const;
    bool running() const { return *engine_.running; }
    QString t() const;
    QString risk() const;
    QString status() const;
    double rate() const { return *engine_.rate; }
    double rateThreshold() const { return engine_.rateThreshold(); }
    bool pending() const { return engine_.pending->has_value(); }
    int totemCount() const { return static_cast<int>(engine_.totems->size()); }
    QAbstractListModel* totems();
    QAbstractListModel* citations();
    QAbstractListModel* chat();
    QAbstractListModel* criteria();
    QAbstractListModel* roleControls();
    QAbstractListModel* osFacts();

    QString nextTitle() const;
    QString nextDetail() const;
    /// What the button of the card says, empty where the card has no action.
    QString nextAction() const;
    QString nextSymbol() const;

    bool verified() const { return engine_.principal->has_value(); }
    QString principal() const;
    QString role() const;
    /// The roles that are meant for the person of this account.
    QStringList availableRoles() const;
    QString whyNoRole() const;
    /// False where there are roles and none of them is meant for the person of this account.
    bool mayTakeRole() const;
    RoleWork roleWork() const;
    double roleReadiness() const { return engine_.roleReadiness(); }
    QString roleReadinessText() const;
    int closedControls() const;
    int controlCount() const;

    bool hasMesh() const { return engine_.mesh->has_value(); }
    double readiness() const { return *engine_.readiness; }
    QString readinessText() const;
    int metCount() const { return engine_.metCount(); }
    /// The ids of the criteria that are not met, highest impact first.
    QStringList openGaps() const;

    bool hasProposal() const { return engine_.evidenceProposal->has_value(); }
    QString proposalName() const;
    QString proposalSummary() const;
    QStringList proposalCriteria() const;
    bool hasDraft() const { return engine_.generatedDoc->has_value(); }
    QString draftCriterion() const;
    QString draftText() const;
    QString draftPlaces() const;
    QStringList draftQuestions() const;

    bool assistantBusy() const { return *engine_.assistantBusy; }
    /// Empty where the assistant proposed nothing.
    QString proposedActionName() const;
    /// Empty where no long work is under way.
    QString progressTitle() const;
    /// 0 to 1, negative where nobody can say how far the work has come.
    double progressShare() const;
    bool modelAtWork() const { return !engine_.modelWork->empty(); }
    /// Who answers for the model, in a few words; empty where it has not been said.
    QString modelLine() const { return modelLine_; }
    void setModelLine(const QString& line);

    Q_INVOKABLE void play();
    Q_INVOKABLE void pause();
    Q_INVOKABLE void bondCollapse();
    Q_INVOKABLE void runNext();
    Q_INVOKABLE void verifyKYC(const QString& role);
    Q_INVOKABLE void leaveIdentity();
    /// Completes the role's control in this row of `roleControls`.
    Q_INVOKABLE void closeRoleControl(int row);
    Q_INVOKABLE void generatePolicy(const QString& criterion);
    Q_INVOKABLE void approveGenerated();
    Q_INVOKABLE void discardGenerated();
    Q_INVOKABLE void addEvidence();
    Q_INVOKABLE void confirmEvidence(const QStringList& criteria);
    Q_INVOKABLE void snapshotOS();
    Q_INVOKABLE void askAssistant(const QString& question);
    Q_INVOKABLE void runProposed();
    Q_INVOKABLE void cancelModelWork();

Q_SIGNALS:
    void equationsChanged();
    void stateLineChanged();
    void runningChanged();
    void tChanged();
    void riskChanged();
    void statusChanged();
    void rateChanged();
    void pendingChanged();
    void totemsChanged();
    void nextChanged();
    void identityChanged();
    void availableRolesChanged();
    void roleWorkChanged();
    void meshChanged();
    void readinessChanged();
    void proposalChanged();
    void draftChanged();
    void assistantBusyChanged();
    void proposedActionChanged();
    void progressChanged();
    void modelLineChanged();

private:
    std::vector<WordingPlace> wordingOfDraft() const;
    /// A task of the person's role and whether its criterion is met.
    struct RoleTask {
        RoleMap::Control control;
        bool closed = false;

        bool operator==(const RoleTask&) const = default;
    };

    template <class T, class... Signals>
    void forward(const Published<T>& property, Signals... changed);
    template <class T, class Model>
    void feed(const Published<T>& property, Model& model);
    void showRoleWork();
    void later(std::function<void()> operation);

    EngineVM& engine_;
    QString modelLine_;
    ListModel<EngineVM::Totems> totems_;
    ListModel<EngineVM::Citations> citations_;
    ListModel<EngineVM::Chat> chat_;
    ListModel<std::vector<SOC2Mesh::Node>> criteria_;
    ListModel<std::vector<RoleTask>> roleControls_;
    ListModel<std::vector<OSFact>> osFacts_;
    std::vector<Subscription> subscriptions_;
};

} // namespace kelvo
