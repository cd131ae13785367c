import QtQuick
import QtQuick.Layouts
import Kelvo

// One criterion: met or open, by its symbol and in words.
RowLayout {
    id: row

    required property string criterion
    required property bool met
    required property string gap
    property string openSymbol: "circle"
    property alias note: note.text
    property bool small: false
    default property alias trailing: trailing.data

    Accessible.name: criterion + (met ? ", met" : ", open: " + gap)
    Accessible.role: Accessible.ListItem
    spacing: Theme.m

    Symbol {
        Layout.alignment: Qt.AlignTop
        Layout.topMargin: Theme.s
        color: row.met ? Theme.met : Theme.open
        implicitHeight: Theme.icon
        implicitWidth: Theme.icon
        name: row.met ? "checkmark.seal.fill" : row.openSymbol
    }
    ColumnLayout {
        Layout.bottomMargin: Theme.s
        Layout.fillWidth: true
        Layout.topMargin: Theme.s
        spacing: Theme.hairline * 2

        Words {
            font.bold: true
            font.pixelSize: row.small ? Theme.small : Theme.body
            text: row.criterion
        }
        Note {
            id: note

            font.pixelSize: row.small ? Theme.tiny : Theme.small
            maximumLineCount: 3
            visible: text !== ""
        }
    }
    RowLayout {
        id: trailing

        Layout.alignment: Qt.AlignVCenter
    }
}
