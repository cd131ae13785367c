import QtQuick
import QtQuick.Layouts
import Kelvo

// A name at the left and its value at the right.
RowLayout {
    id: row

    required property string name
    required property string value

    Accessible.name: name + ": " + value
    Accessible.role: Accessible.StaticText
    Layout.fillWidth: true
    spacing: Theme.m

    Note {
        Accessible.ignored: true
        text: row.name
    }
    Words {
        Accessible.ignored: true
        Layout.fillWidth: false
        font.family: Theme.fixedFamily
        text: row.value
        wrapMode: Text.NoWrap
    }
}
