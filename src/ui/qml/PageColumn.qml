import QtQuick
import QtQuick.Layouts
import Kelvo

// The one column of a page: as wide as the main page's, and it scrolls.
Scroller {
    id: page

    required property real columnWidth
    default property alias content: column.data

    contentHeight: column.implicitHeight + Theme.xl

    ColumnLayout {
        id: column

        anchors.horizontalCenter: parent.horizontalCenter
        spacing: Theme.m
        width: page.columnWidth
        y: Theme.xs
    }
}
