pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// The worst trouble in one sentence, and the way to it. No trouble, no line.
Rectangle {
    id: line

    required property ProofView proof
    required property real columnWidth

    readonly property string sentence: proof.trouble
    readonly property int kind: proof.troubleKind

    signal pageWanted(string name)

    Accessible.name: sentence
    Accessible.role: Accessible.AlertMessage
    Layout.fillWidth: true
    color: Theme.warningSoft
    implicitHeight: Math.max(Theme.length(40), row.implicitHeight + 2 * Theme.xs)
    objectName: "troubleLine"

    Rectangle {
        color: Theme.warningLine
        height: Theme.hairline
        width: parent.width
    }
    Rectangle {
        color: Theme.warningLine
        height: Theme.hairline
        width: parent.width
        y: parent.height - height
    }
    RowLayout {
        id: row

        anchors.centerIn: parent
        spacing: Theme.s
        width: line.columnWidth

        Symbol {
            color: Theme.open
            implicitHeight: Theme.icon
            implicitWidth: Theme.icon
            name: "exclamationmark.triangle.fill"
        }
        Words {
            id: words

            // The line itself speaks; the text behind it is the same.
            Accessible.ignored: true
            Layout.maximumWidth: implicitWidth
            maximumLineCount: 2
            text: line.sentence
        }
        ActionButton {
            objectName: "saveUnwritten"
            text: "Save a copy elsewhere"
            visible: line.kind === ProofView.Trouble.unwritten

            onClicked: line.proof.saveWanted()
        }
        ActionButton {
            Accessible.name: "Show what needs a look"
            objectName: "troubleShow"
            text: "Show"
            visible: line.kind !== ProofView.Trouble.notice

            onClicked: line.pageWanted("proof")
        }
        ActionButton {
            text: "Dismiss"
            visible: line.kind === ProofView.Trouble.notice

            onClicked: line.proof.dismissTrouble()
        }
        Item {
            Layout.fillWidth: true
        }
    }
}
