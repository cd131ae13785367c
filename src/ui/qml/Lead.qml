import QtQuick
import QtQuick.Layouts
import Kelvo

// How things stand on a page, in one sentence, and a quiet note under it.
RowLayout {
    id: lead

    property alias sentence: sentence.text
    property alias note: note.text
    property alias symbol: image.name
    property alias tint: image.color

    Layout.fillWidth: true
    spacing: Theme.m

    Symbol {
        id: image

        Layout.alignment: Qt.AlignTop
        Layout.topMargin: Theme.hairline * 2
        implicitHeight: Theme.length(22)
        implicitWidth: Theme.length(22)
        visible: name !== ""
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: Theme.xs

        Words {
            id: sentence

            Accessible.role: Accessible.Heading
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
        }
        Note {
            id: note

            font.pixelSize: Theme.small
            visible: text !== ""
        }
    }
}
