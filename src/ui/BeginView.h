#pragma once

#include "engine/EngineVM.h"
#include "ports/FilePanel.h"
#include "ports/OtherPrograms.h"
#include "setup/Answers.h"
#include "setup/ListFile.h"
#include "setup/OrganisationFiles.h"
#include "setup/OrganisationList.h"
#include "ui/ListModel.h"

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <functional>
#include <vector>

namespace kelvo {

/// The way from nothing to an organisation's two files, as the window sees it: a list, a few
/// answers, a preview, and then both files or neither. The engine reads them when they are there.
class BeginView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program hands the way to begin to the window.")

    Q_PROPERTY(Stage stage READ stage NOTIFY stageChanged)
    Q_PROPERTY(QString reason READ reason NOTIFY stageChanged)
    Q_PROPERTY(QString folder READ folder CONSTANT)
    Q_PROPERTY(bool longList READ longList WRITE setLongList NOTIFY longListChanged)
    Q_PROPERTY(QStringList csvFaults READ csvFaults NOTIFY faultsChanged)
    Q_PROPERTY(QStringList catalogFaults READ catalogFaults NOTIFY faultsChanged)
    Q_PROPERTY(QString sampleWords READ sampleWords NOTIFY sampleChanged)

    Q_PROPERTY(QString organisation READ organisation WRITE setOrganisation NOTIFY answersChanged)
    Q_PROPERTY(bool named READ named NOTIFY answersChanged)
    Q_PROPERTY(bool asksWhatThereIs READ asksWhatThereIs NOTIFY answersChanged)
    Q_PROPERTY(bool premises READ premises WRITE setPremises NOTIFY answersChanged)
    Q_PROPERTY(bool devices READ devices WRITE setDevices NOTIFY answersChanged)
    Q_PROPERTY(QAbstractListModel* people READ people CONSTANT)

    Q_PROPERTY(QString summary READ summary NOTIFY previewChanged)
    Q_PROPERTY(QVariantList files READ files NOTIFY previewChanged)
    Q_PROPERTY(bool folderIsNew READ folderIsNew NOTIFY previewChanged)
    Q_PROPERTY(QString refusal READ refusal NOTIFY previewChanged)
    Q_PROPERTY(QAbstractListModel* criteria READ criteria CONSTANT)

public:
    enum class Stage {
        done,      ///< the engine has read a readiness graph
        begin,     ///< there is none
        unreadable ///< there is one that cannot be read
    };
    Q_ENUM(Stage)

    enum class Kind { csv, catalog };
    Q_ENUM(Kind)

    /// What this asks of the program around it; all must outlive the view.
    struct Surroundings {
        FilePanel& filePanel;
        OtherPrograms& programs;
        std::string account;              ///< the person's full name, "" where it is not known
        std::function<bool()> openSample; ///< false where the sample cannot be opened
    };

    BeginView(EngineVM& engine, Surroundings surroundings, QObject* parent = nullptr);
    ~BeginView() override;

    Stage stage() const { return stage_; }
    /// Why the readiness graph cannot be read.
    QString reason() const { return reason_; }
    QString folder() const;
    /// The starter list is the long one.
    bool longList() const { return longList_; }
    void setLongList(bool yes);
    /// What keeps the chosen list from being taken, a sentence each.
    QStringList csvFaults() const { return csvFaults_; }
    QStringList catalogFaults() const { return catalogFaults_; }
    /// Why the sample was not opened; empty where it was.
    QString sampleWords() const { return sampleWords_; }

    QString organisation() const;
    void setOrganisation(const QString& name);
    bool named() const;
    bool asksWhatThereIs() const { return fromStarter_; }
    bool premises() const { return answers_.premises; }
    void setPremises(bool yes);
    bool devices() const { return answers_.devices; }
    void setDevices(bool yes);
    QAbstractListModel* people() { return &people_; }

    QString summary() const { return summary_; }
    /// Each file that will be written: `name`, `what`, `size`.
    QVariantList files() const;
    /// The folder of the files is not there yet and will be made.
    bool folderIsNew() const;
    /// Why nothing was written; empty as long as nobody tried.
    QString refusal() const { return refusal_; }
    QAbstractListModel* criteria() { return &criteria_; }

    Q_INVOKABLE void useStarter();
    /// Asks for a file and takes the list in it.
    Q_INVOKABLE void chooseList(Kind kind);
    Q_INVOKABLE void setPerson(int row, const QString& name);
    /// Makes room for one more person behind those of the role in this row.
    Q_INVOKABLE void addPerson(int row);
    /// Makes the two files in memory, for the preview. False without a name.
    Q_INVOKABLE bool prepare();
    Q_INVOKABLE void write();
    Q_INVOKABLE void readAgain();
    Q_INVOKABLE void openFolder();
    Q_INVOKABLE void openSample();

    /// Looks whether the files came from elsewhere, and has the engine read them then.
    void look();

Q_SIGNALS:
    void stageChanged();
    void longListChanged();
    void faultsChanged();
    void sampleChanged();
    void answersChanged();
    void previewChanged();
    /// A list was taken, and the questions are to be asked.
    void listTaken();

private:
    /// One field for a person.
    struct Person {
        std::string role;
        int tasks = 0;
        bool readonly = false;
        bool first = false; ///< of its role
        std::string name;

        bool operator==(const Person&) const = default;
    };

    void refresh();
    void take(OrganisationList list, bool fromStarter);
    void takeFile(Kind kind);
    void setFaults(Kind kind, const QStringList& faults);
    void keepPeople();
    void showPeople();

    EngineVM& engine_;
    Surroundings surroundings_;
    Stage stage_ = Stage::done;
    QString reason_;
    bool longList_ = false;
    QStringList csvFaults_;
    QStringList catalogFaults_;
    QString sampleWords_;
    OrganisationList list_;
    bool fromStarter_ = true;
    Answers answers_;
    OrganisationFiles files_;
    QString summary_;
    QString refusal_;
    ListModel<std::vector<Person>> people_;
    ListModel<std::vector<OrganisationRow>> criteria_;
    Subscription subscription_;
};

} // namespace kelvo
