import QtQuick
import Kelvo

// Something is under way, nobody knows for how long.
Ring {
    id: spinner

    Accessible.name: "Working"
    Accessible.role: Accessible.Animation
    color: Theme.accent
    implicitHeight: Theme.icon
    implicitWidth: Theme.icon
    thickness: Theme.length(2.5)
    trackColor: Theme.track
    value: 0.3

    RotationAnimation on rotation {
        duration: 1100
        from: 0
        loops: Animation.Infinite
        running: spinner.visible
        to: 360
    }
}
