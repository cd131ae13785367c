import QtQuick
import Kelvo

// The mark of keyboard focus around a control.
Rectangle {
    required property bool shown
    property real gap: 2

    anchors.fill: parent
    anchors.margins: -gap - border.width
    border.color: Theme.accent
    border.width: Theme.focusWidth
    color: "transparent"
    radius: Theme.controlRadius + gap + border.width
    visible: shown
}
