import QtQuick
import QtQuick.Layouts
import Kelvo

// The foot of a page with a decision: a quiet sentence at the left, buttons at the right.
Rectangle {
    id: foot

    required property real columnWidth
    property alias text: words.text
    default property alias buttons: row.data

    color: Theme.card
    implicitHeight: Math.max(Theme.length(64), row.implicitHeight + 2 * Theme.s)

    Rectangle {
        color: Theme.line
        height: Theme.hairline
        width: parent.width
    }
    RowLayout {
        id: row

        anchors.centerIn: parent
        spacing: Theme.s
        width: foot.columnWidth

        Note {
            id: words
        }
    }
}
