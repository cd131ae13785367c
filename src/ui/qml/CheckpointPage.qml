pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import Kelvo

// One checkpoint: its first digits, the ways out of this window, and the page as it is printed.
PageColumn {
    id: page

    required property ProofView proof

    objectName: "checkpointPage"

    Lead {
        note: "Your auditor, your accountant, a drawer at home. It holds no secret and dates everything before it."
        sentence: "Give this to somebody who is not you"
        symbol: "checkmark.seal.fill"
        tint: Theme.met
    }
    Card {
        Accessible.name: "First digits"

        Repeater {
            model: page.proof.checkpointLogs

            delegate: RowLayout {
                id: log

                required property string digits
                required property string note

                spacing: Theme.m

                Words {
                    Accessible.name: log.digits.replace(/(.{4})/g, "$1 ")
                    Layout.fillWidth: false
                    font.family: Theme.fixedFamily
                    font.pixelSize: Theme.title
                    text: log.digits
                    wrapMode: Text.NoWrap
                }
                Note {
                    font.pixelSize: Theme.small
                    text: log.note
                }
            }
        }
    }
    Flow {
        Layout.fillWidth: true
        spacing: Theme.s

        ActionButton {
            symbol: "printer"
            text: "Print…"
            weight: ActionButton.Prominent

            onClicked: page.proof.printCheckpoint()
        }
        ActionButton {
            symbol: "envelope"
            text: "Send…"

            onClicked: page.proof.sendCheckpoint()
        }
        ActionButton {
            symbol: "doc.on.doc"
            text: "Copy"

            onClicked: page.proof.copyCheckpoint()
        }
        ActionButton {
            symbol: "square.and.arrow.down"
            text: "Save…"

            onClicked: saving.open()
        }
        Repeater {
            model: page.proof.signingKeys

            delegate: ActionButton {
                required property int index
                required property string modelData

                Accessible.description: modelData
                symbol: "lock"
                text: page.proof.signingKeys.length === 1 ? "Sign with my SSH key" : "Sign with " + modelData

                onClicked: page.proof.signCheckpoint(index)
            }
        }
    }
    Note {
        Accessible.role: Accessible.AlertMessage
        font.pixelSize: Theme.small
        objectName: "handed"
        text: page.proof.handed === "" ? "Send opens a message in your own mail program. Nothing is sent by this window." : page.proof.handed
    }
    Rectangle {
        Layout.fillWidth: true
        color: Theme.track
        implicitHeight: sheet.height + 2 * Theme.m
        radius: Theme.controlRadius

        CheckpointSheet {
            id: sheet

            Accessible.name: spoken
            Accessible.role: Accessible.StaticText
            anchors.centerIn: parent
            checkpoint: page.proof.checkpointText
            height: width * 842 / 595
            objectName: "checkpointSheet"
            width: Math.min(parent.width - 2 * Theme.m, Theme.length(520))
        }
    }
    FileDialog {
        id: saving

        acceptLabel: "Save"
        currentFile: "checkpoint.txt"
        fileMode: FileDialog.SaveFile
        nameFilters: ["Checkpoint (*.txt)", "Page (*.pdf)"]
        title: "Save the checkpoint"

        onAccepted: page.proof.saveCheckpoint(selectedFile)
    }
}
