#pragma once

#include "engine/EngineVM.h"
#include "ports/OtherPrograms.h"
#include "ui/ListModel.h"

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QUrl>
#include <QVariantList>
#include <vector>

namespace kelvo {

/// The audit as the window sees it: the period, what the evidence of each criterion carries, the
/// report's own documents, and handing the package over. Over the engine's published comparison and
/// package; it keeps nothing of its own.
class AuditView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program hands the audit to the window.")

    Q_PROPERTY(bool mayLook READ mayLook NOTIFY changed)
    Q_PROPERTY(bool mayDecide READ mayDecide NOTIFY changed)
    Q_PROPERTY(bool hasPeriod READ hasPeriod NOTIFY changed)
    Q_PROPERTY(QString periodWords READ periodWords NOTIFY changed)
    /// Days to begin the period form with, 2026-01-31.
    Q_PROPERTY(QString periodFrom READ periodFrom NOTIFY changed)
    Q_PROPERTY(QString periodTo READ periodTo NOTIFY changed)
    Q_PROPERTY(QString firm READ firm NOTIFY changed)
    Q_PROPERTY(QString headline READ headline NOTIFY changed)
    /// "Readiness 94.0% · supported 24.1%"
    Q_PROPERTY(QString figures READ figures NOTIFY changed)
    Q_PROPERTY(QAbstractListModel* criteria READ criteria CONSTANT)
    Q_PROPERTY(QVariantList documents READ documents NOTIFY changed)
    Q_PROPERTY(QString contents READ contents NOTIFY changed)

    Q_PROPERTY(Stage stage READ stage NOTIFY packageChanged)
    Q_PROPERTY(double share READ share NOTIFY shareChanged)
    Q_PROPERTY(QString recipient READ recipient NOTIFY packageChanged)
    Q_PROPERTY(QStringList reasons READ reasons NOTIFY packageChanged)
    Q_PROPERTY(QString packageName READ packageName NOTIFY packageChanged)
    Q_PROPERTY(QString packageFolder READ packageFolder NOTIFY packageChanged)
    /// The package number in two lines of four groups of eight.
    Q_PROPERTY(QString number READ number NOTIFY packageChanged)

public:
    enum class Stage { none, reading, refused, writing, written, failed };
    Q_ENUM(Stage)

    /// Both must outlive the view.
    AuditView(EngineVM& engine, OtherPrograms& programs, QObject* parent = nullptr);

    bool mayLook() const;
    bool mayDecide() const { return engine_.mayDecide(); }
    bool hasPeriod() const;
    QString periodWords() const;
    QString periodFrom() const;
    QString periodTo() const;
    QString firm() const;
    QString headline() const;
    QString figures() const;
    QAbstractListModel* criteria() { return &criteria_; }
    QVariantList documents() const;
    QString contents() const;

    Stage stage() const;
    double share() const { return engine_.packageShare(); }
    QString recipient() const;
    QStringList reasons() const;
    QString packageName() const;
    QString packageFolder() const;
    QString number() const;

    /// Has the engine ask for and seal the period; `to` is not read for Type I. The answer is what
    /// is wrong with a field, empty where the engine was asked.
    Q_INVOKABLE QString setPeriod(bool type2, const QString& from, const QString& to,
                                  const QString& firm);
    /// Has the engine ask for and seal which days the last evidence of a criterion (the row of
    /// this place) speaks of. What is not known stays empty; the days are needed. Answers as
    /// `setPeriod`.
    Q_INVOKABLE QString setDates(int row, const QString& from, const QString& to,
                                 const QString& producedBy, const QString& source,
                                 const QString& population);
    /// `kind` is the place in `documents`.
    Q_INVOKABLE void addDocument(int kind);
    Q_INVOKABLE void handOver(const QString& recipient, const QUrl& folder, bool anyway);
    Q_INVOKABLE void stop();
    Q_INVOKABLE void openPackage();
    Q_INVOKABLE void copyNumber();

Q_SIGNALS:
    void changed();
    void packageChanged();
    void shareChanged();

private:
    /// One criterion with the times at which its control is due.
    struct Row {
        QString id{};
        QString title{};
        QString standing{}; ///< "partial"
        QString words{};    ///< "Partial 2 of 3"
        QString detail{};
        QString evidence{};   ///< name of the last closing's file whose days can be recorded
        QVariantList cells{}; ///< "notOver", "missed", "byWord", "met", in order

        bool operator==(const Row&) const = default;
    };

    /// An empty one until the first is there.
    const ProofComparison& comparison() const;
    const ProofStanding& standing() const;
    void show();
    Row rowOf(std::size_t place) const;
    /// The decision by which a criterion was last closed with a document; none where there is none.
    const LoggedDecision* documentOf(std::size_t place) const;

    EngineVM& engine_;
    OtherPrograms& programs_;
    ListModel<std::vector<Row>> criteria_;
    QTimer progress_;
    std::vector<Subscription> subscriptions_;
};

} // namespace kelvo
