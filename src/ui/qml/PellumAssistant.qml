pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// The chat with the assistant, and the one step that it may propose.
ColumnLayout {
    id: assistant

    required property EngineView engine

    function send() {
        const question = field.text;
        field.clear();
        assistant.engine.askAssistant(question);
    }

    Layout.fillWidth: true
    spacing: Theme.m

    Note {
        // Fixed text, see docs/decisions.md.
        text: "Ask in plain English when you're stuck. Pellum reads your live readiness on this Mac and can suggest one next step — you always confirm."
    }
    Rectangle {
        Layout.fillWidth: true
        color: Theme.well
        implicitHeight: Math.max(Theme.length(120), Math.min(Theme.length(280), chat.contentHeight + 2 * Theme.m))
        radius: Theme.controlRadius

        Rows {
            id: chat

            anchors.fill: parent
            anchors.margins: Theme.m
            anchors.rightMargin: scrolls ? Theme.xs : Theme.m
            label: "Conversation with Pellum"
            maximumHeight: Infinity
            model: assistant.engine.chat
            objectName: "chat"
            spacing: Theme.s

            delegate: Bubble {
                width: chat.rowWidth
            }

            // Once the new rows are laid out. qmllint takes callLater for a property.
            onCountChanged: Qt.callLater(positionViewAtEnd) // qmllint disable
            onHeightChanged: Qt.callLater(positionViewAtEnd) // qmllint disable
        }
        ColumnLayout {
            anchors.centerIn: parent
            spacing: Theme.xs
            visible: chat.count === 0
            width: parent.width - 2 * Theme.l

            Note {
                horizontalAlignment: Text.AlignHCenter
                text: "No questions yet."
            }
            Note {
                color: Theme.tertiary
                font.pixelSize: Theme.small
                horizontalAlignment: Text.AlignHCenter
                text: "Ask for instance what to do next, or why readiness is where it is."
            }
        }
    }
    ActionButton {
        symbol: "checkmark.circle.fill"
        text: "Do it: " + assistant.engine.proposedActionName
        visible: assistant.engine.proposedActionName !== ""
        weight: ActionButton.Prominent

        onClicked: assistant.engine.runProposed()
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.s

        Field {
            id: field

            Layout.fillWidth: true
            objectName: "question"
            placeholderText: "Ask Pellum…"

            onAccepted: assistant.send()
        }
        Item {
            Layout.preferredHeight: Theme.controlHeight
            Layout.preferredWidth: Theme.controlHeight
            visible: assistant.engine.assistantBusy

            Spinner {
                Accessible.name: "Pellum is answering"
                anchors.centerIn: parent
            }
        }
        ActionButton {
            Accessible.name: "Send"
            symbol: "paperplane.fill"
            visible: !assistant.engine.assistantBusy
            weight: ActionButton.Prominent

            onClicked: assistant.send()
        }
    }
    Note {
        color: Theme.tertiary
        font.pixelSize: Theme.small
        maximumLineCount: 1
        objectName: "modelLine"
        text: "Model on this computer: " + assistant.engine.modelLine
        visible: assistant.engine.modelLine !== ""
        wrapMode: Text.NoWrap
    }
}
