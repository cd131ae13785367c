import QtQuick
import QtQuick.Controls
import Kelvo

// A switch with its label at the right.
Switch {
    id: toggle

    Accessible.name: text
    font.pixelSize: Theme.body
    implicitHeight: Theme.length(30)
    padding: 0
    spacing: Theme.m

    contentItem: Words {
        Accessible.ignored: true
        leftPadding: toggle.indicator.width + toggle.spacing
        text: toggle.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.NoWrap
    }
    indicator: Rectangle {
        border.color: toggle.checked ? Theme.accent : Theme.controlLine
        color: toggle.checked ? Theme.accent : Theme.track
        implicitHeight: Theme.length(20)
        implicitWidth: Theme.length(36)
        radius: height / 2
        y: (toggle.height - height) / 2

        Rectangle {
            color: toggle.checked ? Theme.accentText : Theme.card
            border.color: toggle.checked ? "transparent" : Theme.controlLine
            height: parent.height - Theme.length(6)
            radius: height / 2
            width: height
            x: Theme.length(3) + toggle.visualPosition * (parent.width - width - Theme.length(6))
            y: Theme.length(3)

            Behavior on x {
                NumberAnimation {
                    duration: Theme.quick
                }
            }
        }
        FocusRing {
            shown: toggle.visualFocus
            radius: parent.radius + gap + border.width
        }
    }
}
