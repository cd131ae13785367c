import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// Asked once when the window is closed while something would be lost by it.
Popup {
    id: question

    required property ProofView proof
    property bool agreed: false

    signal leave

    anchors.centerIn: Overlay.overlay
    closePolicy: Popup.CloseOnEscape
    focus: true
    modal: true
    objectName: "closingQuestion"
    padding: Theme.l
    width: Math.min(Theme.length(460), Overlay.overlay ? Overlay.overlay.width - 2 * Theme.l : Theme.length(460))

    background: Rectangle {
        border.color: Theme.warningLine
        color: Theme.card
        radius: Theme.radius
    }
    contentItem: ColumnLayout {
        spacing: Theme.m

        SymbolWords {
            Accessible.role: Accessible.AlertMessage
            symbol: "exclamationmark.triangle.fill"
            text: question.proof.closingQuestion
            tint: Theme.open
        }
        Note {
            font.pixelSize: Theme.small
            text: question.proof.savedWords
            visible: text !== ""
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.s

            ActionButton {
                text: "Save a copy elsewhere"

                onClicked: question.proof.saveWanted()
            }
            Item {
                Layout.fillWidth: true
            }
            ActionButton {
                id: stay

                text: "Stay"
                weight: ActionButton.Tinted

                onClicked: question.close()
            }
            ActionButton {
                text: "Close anyway"

                onClicked: {
                    question.agreed = true;
                    question.close();
                    question.leave();
                }
            }
        }
    }

    onOpened: stay.forceActiveFocus(Qt.TabFocusReason)
}
