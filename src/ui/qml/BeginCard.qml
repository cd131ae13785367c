import QtQuick
import QtQuick.Layouts
import Kelvo

// In place of readiness where there is no list of criteria: three ways to one, or why the one that
// is there cannot be read.
Card {
    id: card

    required property BeginView begin
    readonly property bool unreadable: begin.stage === BeginView.Stage.unreadable

    heading: "Begin with your organisation"
    warning: unreadable

    SymbolWords {
        objectName: "unreadable"
        symbol: "exclamationmark.triangle.fill"
        text: "Your list is there but could not be read: " + card.begin.reason + "."
        tint: Theme.open
        visible: card.unreadable
    }
    Note {
        text: "Kelvo needs a list of what your company does for its security, and who does it. Three ways to begin; each shows what it will write before it writes."
        visible: !card.unreadable
    }
    BeginWay {
        action: "Use the starter list"
        actionName: "useStarter"
        heading: "Starter list"
        note: card.begin.longList ? "27 criteria for a small company, all 33 common criteria covered. A line a task; change it later."
                                  : "13 criteria for a small company, all 33 common criteria covered. Ready in five minutes; change it later."
        prominent: true
        visible: !card.unreadable

        onChosen: card.begin.useStarter()

        LinkButton {
            objectName: "otherStarter"
            text: card.begin.longList ? "The short list: 13 criteria" : "The long list: 27 criteria, a line a task"

            onClicked: card.begin.longList = !card.begin.longList
        }
    }
    BeginWay {
        action: card.begin.csvFaults.length > 0 ? "Choose again…" : "Open a CSV…"
        actionName: "openCsv"
        faults: card.begin.csvFaults
        heading: "Your own list"
        note: "A spreadsheet saved as CSV, with the columns id and title at least."
        visible: !card.unreadable

        onChosen: card.begin.chooseList(BeginView.Kind.csv)
    }
    BeginWay {
        action: card.begin.catalogFaults.length > 0 ? "Choose again…" : "Open a catalog…"
        actionName: "openCatalog"
        faults: card.begin.catalogFaults
        heading: "A published catalog"
        note: "An OSCAL catalog in JSON, from your auditor or a standards body."
        visible: !card.unreadable

        onChosen: card.begin.chooseList(BeginView.Kind.catalog)
    }
    RowLayout {
        spacing: Theme.s

        Symbol {
            Layout.alignment: Qt.AlignTop
            Layout.topMargin: Theme.hairline * 2
            color: Theme.secondary
            implicitHeight: Theme.icon
            implicitWidth: Theme.icon
            name: "folder"
        }
        ColumnLayout {
            spacing: Theme.hairline * 2

            Note {
                font.pixelSize: Theme.small
                text: card.unreadable ? "Your files are kept in" : "Your files will be kept in"
            }
            Words {
                font.family: Theme.fixedFamily
                font.pixelSize: Theme.small
                text: card.begin.folder
                wrapMode: Text.WrapAnywhere
            }
        }
        ActionButton {
            text: "Open the folder"
            visible: card.unreadable

            onClicked: card.begin.openFolder()
        }
        ActionButton {
            text: "Read again"
            visible: card.unreadable
            weight: ActionButton.Prominent

            onClicked: card.begin.readAgain()
        }
        ActionButton {
            objectName: "openSample"
            text: "Look at a sample first"
            visible: !card.unreadable

            onClicked: card.begin.openSample()
        }
    }
    Note {
        font.pixelSize: Theme.small
        text: card.begin.sampleWords || "The sample is a made-up company in a scratch folder. Nothing of yours is touched."
        visible: !card.unreadable
    }
}
