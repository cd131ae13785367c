import QtQuick
import QtQuick.Controls
import Kelvo

// A pane that scrolls, and brings what receives the keyboard focus into view.
Flickable {
    id: scroller

    // What lies over the pane's lower end.
    property real covered: 0
    readonly property real clear: height - covered

    function reveal(item: Item) {
        for (let up = item; up !== scroller.contentItem; up = up.parent) {
            if (!up)
                return;
        }
        const box = item.mapToItem(contentItem, 0, 0, item.width, item.height);
        const room = Theme.l;
        if (box.y - room < contentY)
            contentY = Math.max(0, box.y - room);
        else if (box.y + Math.min(box.height, clear - 2 * room) + room > contentY + clear)
            contentY = Math.min(contentHeight - height, box.y + box.height + room - clear);
    }

    function turn(pages: real) {
        contentY = Math.max(0, Math.min(contentHeight - height, contentY + pages * clear));
    }

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentWidth: width
    interactive: contentHeight > height

    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown)
            turn(0.9);
        else if (event.key === Qt.Key_PageUp)
            turn(-0.9);
        else
            return;
        event.accepted = true;
    }

    ScrollBar.vertical: ThinScrollBar {
    }

    Connections {
        function onActiveFocusItemChanged() {
            const item = scroller.Window.activeFocusItem;
            if (item)
                scroller.reveal(item);
        }

        target: scroller.Window.window
    }
}
