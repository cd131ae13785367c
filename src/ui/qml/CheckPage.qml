pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Kelvo

// Holds a checkpoint that somebody kept against the logs as they are.
PageColumn {
    id: page

    required property ProofView proof

    objectName: "checkPage"

    Lead {
        note: "Paste the text, or open the file. Each log is looked at by itself."
        sentence: "Does everything before it still stand?"
        symbol: "link"
        tint: Theme.tertiary
    }
    Card {
        Accessible.name: "The checkpoint"

        ScrollView {
            Layout.fillWidth: true
            Layout.preferredHeight: Theme.length(190)

            TextArea {
                id: pasted

                Accessible.name: "The text of the checkpoint"
                color: Theme.text
                font.family: Theme.fixedFamily
                font.pixelSize: Theme.small
                objectName: "pastedCheckpoint"
                placeholderText: "Kelvo seal log checkpoint 1"
                placeholderTextColor: Theme.tertiary
                selectByMouse: true
                textFormat: TextEdit.PlainText
                wrapMode: TextEdit.WrapAnywhere

                background: Rectangle {
                    border.color: pasted.activeFocus ? Theme.accent : Theme.controlLine
                    border.width: pasted.activeFocus ? Theme.focusWidth : Theme.hairline
                    color: Theme.card
                    radius: Theme.controlRadius
                }
                Keys.onTabPressed: nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)
            }
        }
        Flow {
            Layout.fillWidth: true
            spacing: Theme.s

            ActionButton {
                enabled: pasted.text.trim() !== ""
                objectName: "checkPasted"
                text: "Check"
                weight: ActionButton.Prominent

                onClicked: page.proof.checkCheckpoint(pasted.text)
            }
            ActionButton {
                symbol: "folder"
                text: "Open a file…"

                onClicked: opening.open()
            }
        }
    }
    Card {
        Accessible.name: "Answers"
        visible: page.proof.answers.length > 0
        warning: !page.proof.answersHold

        Repeater {
            model: page.proof.answers

            delegate: SymbolWords {
                required property int index
                required property string modelData

                Accessible.name: modelData
                Accessible.role: Accessible.AlertMessage
                symbol: page.proof.answersHold ? "checkmark.circle.fill" : "exclamationmark.circle"
                text: modelData
                tint: page.proof.answersHold ? Theme.met : Theme.open
            }
        }
    }
    FileDialog {
        id: opening

        fileMode: FileDialog.OpenFile
        nameFilters: ["Checkpoints (*.txt)", "All files (*)"]
        title: "Open a checkpoint"

        onAccepted: page.proof.checkCheckpointFile(selectedFile)
    }
}
