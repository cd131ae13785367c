import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// A share of a whole as a bar; moves calmly to a new value.
ProgressBar {
    id: meter

    Layout.fillWidth: true
    implicitHeight: Theme.length(8)
    padding: 0

    Behavior on value {
        NumberAnimation {
            duration: Theme.calm
            easing.type: Easing.OutCubic
        }
    }
    background: Rectangle {
        color: Theme.track
        radius: height / 2
    }
    contentItem: Item {
        Rectangle {
            color: Theme.accent
            height: parent.height
            radius: height / 2
            visible: meter.visualPosition > 0
            width: Math.max(height, meter.visualPosition * parent.width)
        }
    }
}
