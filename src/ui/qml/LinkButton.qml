import QtQuick
import QtQuick.Controls
import Kelvo

// A quiet choice in small words.
AbstractButton {
    id: link

    Accessible.name: text
    hoverEnabled: true
    implicitHeight: Theme.length(24)
    implicitWidth: words.implicitWidth

    background: Item {
        FocusRing {
            shown: link.visualFocus
        }
    }
    contentItem: Text {
        id: words

        Accessible.ignored: true
        color: link.hovered ? Theme.accentHover : Theme.accent
        font.pixelSize: Theme.small
        font.underline: link.hovered
        text: link.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
    }
}
