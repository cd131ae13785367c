import QtQuick
import QtQuick.Layouts
import Kelvo

// A line of text with a symbol before it.
RowLayout {
    id: line

    property alias symbol: image.name
    property alias tint: image.color
    property alias text: words.text
    property alias font: words.font
    property alias color: words.color
    property alias maximumLineCount: words.maximumLineCount
    property alias wrapMode: words.wrapMode

    Layout.fillWidth: true
    spacing: Theme.s

    Symbol {
        id: image

        Layout.alignment: Qt.AlignTop
        color: Theme.accent
        implicitHeight: Theme.icon
        implicitWidth: Theme.icon
    }
    Words {
        id: words

        Layout.alignment: Qt.AlignVCenter
    }
}
