#pragma once

#include "engine/EngineVM.h"
#include "ports/OtherPrograms.h"
#include "ui/ListModel.h"
#include "ui/ProofCards.h"

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>
#include <optional>
#include <vector>

namespace kelvo {

/// The proof as the window sees it: how records, logs, evidence and checkpoints stand to one
/// another, and what the person can do about it. Over the engine's published comparison; it keeps
/// nothing but what was typed, dismissed and last verified in this window.
class ProofView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program hands its one proof to the window.")

    /// The line of trouble: the worst in a sentence; empty where there is none.
    Q_PROPERTY(QString trouble READ trouble NOTIFY changed)
    Q_PROPERTY(Trouble troubleKind READ troubleKind NOTIFY changed)
    Q_PROPERTY(int unwrittenCount READ unwrittenCount NOTIFY changed)
    /// What became of the last copy that was saved elsewhere.
    Q_PROPERTY(QString savedWords READ savedWords NOTIFY changed)
    Q_PROPERTY(QString closingQuestion READ closingQuestion NOTIFY changed)
    Q_PROPERTY(Standing standing READ standing NOTIFY changed)
    Q_PROPERTY(QString headline READ headline NOTIFY changed)
    Q_PROPERTY(QString note READ note NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* cards READ cards CONSTANT)
    Q_PROPERTY(QAbstractListModel* logs READ logs CONSTANT)
    Q_PROPERTY(QAbstractListModel* decisions READ decisions CONSTANT)
    Q_PROPERTY(int decisionCount READ decisionCount NOTIFY changed)
    Q_PROPERTY(QString find READ find WRITE setFind NOTIFY changed)
    Q_PROPERTY(int earlierRecords READ earlierRecords NOTIFY changed)
    Q_PROPERTY(QString outputsFolder READ outputsFolder CONSTANT)

    Q_PROPERTY(bool mayVerify READ mayVerify NOTIFY changed)
    Q_PROPERTY(bool mayMend READ mayMend NOTIFY changed)
    Q_PROPERTY(bool mayDecide READ mayDecide NOTIFY changed)

    /// That it is time for a checkpoint; empty where it is not, or not for this person.
    Q_PROPERTY(QString checkpointReminder READ checkpointReminder NOTIFY changed)
    Q_PROPERTY(int checkpointCount READ checkpointCount NOTIFY changed)
    Q_PROPERTY(QStringList checkpoints READ checkpoints NOTIFY changed)
    Q_PROPERTY(QString checkpointText READ checkpointText NOTIFY checkpointChanged)
    Q_PROPERTY(QAbstractListModel* checkpointLogs READ checkpointLogs CONSTANT)
    Q_PROPERTY(QStringList signingKeys READ signingKeys NOTIFY checkpointChanged)
    Q_PROPERTY(QString handed READ handed NOTIFY checkpointChanged)
    Q_PROPERTY(QStringList answers READ answers NOTIFY answersChanged)
    Q_PROPERTY(bool answersHold READ answersHold NOTIFY answersChanged)

public:
    enum class Standing { comparing, empty, whole, look };
    Q_ENUM(Standing)

    /// What the line of trouble is about.
    enum class Trouble { none, unwritten, proof, notice };
    Q_ENUM(Trouble)

    /// Both must outlive the view.
    ProofView(EngineVM& engine, OtherPrograms& programs, QObject* parent = nullptr);
    ~ProofView() override;

    QString trouble() const;
    Trouble troubleKind() const;
    int unwrittenCount() const { return static_cast<int>(engine_.unwritten->size()); }
    const QString& savedWords() const { return savedWords_; }
    /// What would be lost by closing the window now; empty where nothing would.
    QString closingQuestion() const;
    Standing standing() const;
    QString headline() const;
    QString note() const;
    QAbstractListModel* cards() { return &cards_; }
    QAbstractListModel* logs() { return &logs_; }
    QAbstractListModel* decisions() { return &decisions_; }
    int decisionCount() const { return decisionCount_; }
    const QString& find() const { return find_; }
    void setFind(const QString& words);
    /// Records of earlier runs in the outputs folder.
    int earlierRecords() const;
    QString outputsFolder() const;

    bool mayVerify() const;
    bool mayMend() const;   ///< restore a record, supply evidence
    bool mayDecide() const; ///< adopt records, make a checkpoint

    QString checkpointReminder() const;
    int checkpointCount() const;
    QStringList checkpoints() const;
    QString checkpointText() const;
    QAbstractListModel* checkpointLogs() { return &checkpointLogs_; }
    QStringList signingKeys() const;
    /// What became of the last print, message, copy, file or signature.
    const QString& handed() const { return handed_; }
    const QStringList& answers() const { return answers_; }
    bool answersHold() const { return answersHold_; }

    /// Hides the line of trouble that is shown, for this run.
    Q_INVOKABLE void dismissTrouble();
    /// Writes what is not on the disk into this folder, too.
    Q_INVOKABLE void saveUnwritten(const QUrl& folder);

    /// Runs the card's action of this place.
    Q_INVOKABLE void runAction(int card, int action);
    Q_INVOKABLE void viewEvidence(int row);
    Q_INVOKABLE void verifyEvidence(int row);
    Q_INVOKABLE void supplyEvidence(int row);
    Q_INVOKABLE void openFolder();

    Q_INVOKABLE void makeCheckpoint();
    Q_INVOKABLE void showCheckpoint(int row);
    Q_INVOKABLE void printCheckpoint();
    Q_INVOKABLE void sendCheckpoint();
    Q_INVOKABLE void copyCheckpoint();
    Q_INVOKABLE void saveCheckpoint(const QUrl& file);
    Q_INVOKABLE void signCheckpoint(int key);
    /// Answers for each block of a pasted checkpoint.
    Q_INVOKABLE void checkCheckpoint(const QString& text);
    Q_INVOKABLE void checkCheckpointFile(const QUrl& file);

Q_SIGNALS:
    void changed();
    void checkpointChanged();
    /// The person wants to choose a folder for what is not on the disk.
    void saveWanted();
    /// A checkpoint is there to be shown.
    void checkpointMade();
    void answersChanged();

private:
    /// One row of what was decided.
    struct Decision {
        QString title{};
        QString detail{};
        QString symbol{};
        QString result{}; ///< of the last look at the kept file, or why it is not kept
        QString root{};
        QString name{};
        bool amber = false;
        bool kept = false;
        bool missing = false;

        bool operator==(const Decision&) const = default;
    };
    struct LogRow {
        QString line;
        QString note;
        bool whole = true;

        bool operator==(const LogRow&) const = default;
    };
    struct CheckpointRow {
        QString digits;
        QString note;

        bool operator==(const CheckpointRow&) const = default;
    };

    struct Line {
        QString sentence;
        Trouble kind = Trouble::proof;
    };

    const ProofComparison& comparison() const;
    /// The lines of trouble, worst first, without those that were dismissed.
    std::vector<Line> lines() const;
    void show();
    void showDecisions();
    void showLogs();
    Decision decisionRow(const LoggedDecision& decision) const;
    std::optional<RecordGlance> glanceAt(const std::string& file) const;
    void openCopy(const std::string& root, const QString& name);
    void showText(const Checkpoint& checkpoint, const std::string& fileName);
    void tell(const QString& words);
    const Decision* decisionAt(int row) const;

    EngineVM& engine_;
    OtherPrograms& programs_;
    ListModel<std::vector<ProofCard>> cards_;
    ListModel<std::vector<LogRow>> logs_;
    ListModel<std::vector<Decision>> decisions_;
    ListModel<std::vector<CheckpointRow>> checkpointLogs_;
    int decisionCount_ = 0;
    QString find_;
    QStringList dismissed_;
    QString savedWords_;
    Checkpoint checkpoint_;
    std::string checkpointFile_;
    std::vector<SigningKey> keys_;
    QString handed_;
    QStringList answers_;
    bool answersHold_ = false;
    /// Copies that other programs were given to show; gone with the window.
    QTemporaryDir shown_;
    std::vector<Subscription> subscriptions_;
};

} // namespace kelvo
