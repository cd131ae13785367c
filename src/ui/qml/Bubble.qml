import QtQuick
import Kelvo

// One line of the conversation: the assistant's at the leading side, the person's at the trailing.
Item {
    id: bubble

    required property string speaker
    required property string line
    readonly property bool fromAssistant: speaker === "pellum"
    readonly property real widest: width * 0.86 - (fromAssistant ? Theme.icon + Theme.s : 0)

    implicitHeight: surface.height

    Symbol {
        id: face

        color: Theme.accent
        height: Theme.icon
        name: "apple.intelligence"
        visible: bubble.fromAssistant
        width: Theme.icon
        y: Theme.s
    }
    Rectangle {
        id: surface

        color: bubble.fromAssistant ? Theme.card : Theme.accentSoft
        border.color: bubble.fromAssistant ? Theme.line : Theme.accentLine
        height: words.height + 2 * Theme.s
        radius: Theme.radius
        width: words.width + 2 * Theme.m
        x: bubble.fromAssistant ? face.width + Theme.s : bubble.width - width

        TextEdit {
            id: words

            Accessible.name: (bubble.fromAssistant ? "Pellum: " : "You: ") + text
            Accessible.role: Accessible.StaticText
            activeFocusOnPress: true
            color: Theme.text
            font.pixelSize: Theme.body
            readOnly: true
            selectByMouse: true
            selectedTextColor: Theme.accentText
            selectionColor: Theme.accent
            text: bubble.line
            textFormat: TextEdit.PlainText
            width: Math.min(implicitWidth, bubble.widest - 2 * Theme.m)
            wrapMode: TextEdit.Wrap
            x: Theme.m
            y: Theme.s
        }
    }
}
