import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// One entry of the menu: symbol, words, a mark where a page needs a look, the keys that open it.
MenuItem {
    id: entry

    property string symbol: ""
    property string keys: ""
    property bool needsLook: false

    Accessible.name: text + (needsLook ? ", needs a look" : "")
    implicitHeight: Theme.length(32)
    leftPadding: Theme.s
    rightPadding: Theme.s

    background: Rectangle {
        color: entry.highlighted ? Theme.accentSoft : "transparent"
        radius: Theme.xs
    }
    contentItem: RowLayout {
        spacing: Theme.s

        Symbol {
            color: Theme.secondary
            implicitHeight: Theme.icon
            implicitWidth: Theme.icon
            name: entry.symbol
        }
        Words {
            text: entry.text
            wrapMode: Text.NoWrap
        }
        Symbol {
            color: Theme.open
            implicitHeight: Theme.icon
            implicitWidth: Theme.icon
            name: "exclamationmark.triangle.fill"
            visible: entry.needsLook
        }
        Note {
            Layout.fillWidth: false
            font.pixelSize: Theme.small
            text: entry.keys
        }
    }
}
