import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// The rows of a list, as high as they are up to a limit and scrolling within it: however long the
// list, only what is visible exists.
ListView {
    id: rows

    property real maximumHeight: Theme.length(300)
    property string label: ""

    Accessible.name: label
    Accessible.role: Accessible.List
    Layout.fillWidth: true
    Layout.rightMargin: scrolls ? -Theme.s : 0
    activeFocusOnTab: scrolls
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    implicitHeight: Math.min(contentHeight, maximumHeight)
    interactive: scrolls
    readonly property bool scrolls: contentHeight > height + 1
    readonly property real rowWidth: width - (scrolls ? Theme.m : 0)

    Keys.onDownPressed: contentY = Math.min(contentY + Theme.length(40), originY + contentHeight - height)
    Keys.onUpPressed: contentY = Math.max(contentY - Theme.length(40), originY)

    ScrollBar.vertical: ThinScrollBar {
    }

    FocusRing {
        shown: rows.activeFocus
        gap: -Theme.focusWidth
        z: 2
    }
}
