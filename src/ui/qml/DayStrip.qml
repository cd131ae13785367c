pragma ComponentBehavior: Bound
import QtQuick
import Kelvo

// The times at which a control was or will be due, as cells of one bar: filled by documents or
// readings, outlined by somebody's word, amber where nothing covers them, empty where not due yet.
Row {
    id: strip

    property var cells: []

    Accessible.ignored: true
    height: Theme.length(14)
    spacing: cells.length > 16 ? 0 : Theme.hairline * 2

    Repeater {
        model: strip.cells

        delegate: Rectangle {
            required property string modelData

            border.color: modelData === "met" || modelData === "byWord" ? Theme.met : modelData === "missed" ? Theme.open : Theme.line
            border.width: modelData === "byWord" ? Theme.focusWidth : Theme.hairline
            color: modelData === "met" ? Theme.met : modelData === "missed" ? Theme.warningSoft : "transparent"
            height: strip.height
            radius: Math.min(width, height) / 5
            width: Math.max(1, (strip.width - (strip.cells.length - 1) * strip.spacing) / strip.cells.length)
        }
    }
}
