import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// Text as it is, never markup. What does not fit is cut with an ellipsis and shown whole on hover.
Label {
    id: words

    Layout.fillWidth: true
    color: Theme.text
    elide: Text.ElideRight
    font.pixelSize: Theme.body
    textFormat: Text.PlainText
    wrapMode: Text.Wrap

    HoverHandler {
        id: hover

        enabled: words.truncated
    }
    Tip {
        text: words.truncated ? words.text : ""
        visible: hover.hovered && words.truncated
    }
}
