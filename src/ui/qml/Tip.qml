import QtQuick
import QtQuick.Controls
import Kelvo

// A tooltip in plain text, no wider than is easy to read.
ToolTip {
    id: tip

    delay: 500
    padding: Theme.s

    background: Rectangle {
        border.color: Theme.controlLine
        color: Theme.card
        radius: Theme.xs
    }
    contentItem: Text {
        color: Theme.text
        font.pixelSize: Theme.small
        text: tip.text
        textFormat: Text.PlainText
        width: Math.min(implicitWidth, Theme.length(420))
        wrapMode: Text.Wrap
    }
}
