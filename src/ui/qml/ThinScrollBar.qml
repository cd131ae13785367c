import QtQuick
import QtQuick.Controls
import Kelvo

ScrollBar {
    id: bar

    implicitWidth: Theme.length(10)
    minimumSize: 0.08
    padding: Theme.length(2)
    policy: size < 1 ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff

    background: null
    contentItem: Rectangle {
        color: bar.pressed || bar.hovered ? Theme.tertiary : Theme.controlLine
        radius: width / 2
    }
}
