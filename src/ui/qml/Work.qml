import QtQuick
import QtQuick.Layouts
import Kelvo

// Long work that is under way: what, how far it has come or for how long, and a way to give up on
// the model. What is over in a moment does not flash.
RowLayout {
    id: work

    required property EngineView engine
    readonly property bool measured: engine.progressShare >= 0

    Layout.fillWidth: true
    opacity: 0
    spacing: Theme.s
    visible: engine.progressTitle !== ""

    states: State {
        when: work.visible

        PropertyChanges {
            target: work
            opacity: 1
        }
    }
    transitions: Transition {
        to: "*"

        SequentialAnimation {
            PauseAnimation {
                duration: Theme.calm
            }
            OpacityAnimator {
                duration: Theme.quick
            }
        }
    }

    Item {
        Layout.fillWidth: true
    }
    Spinner {
        visible: !work.measured
    }
    Note {
        Layout.fillWidth: false
        Layout.maximumWidth: work.width - Theme.length(150)
        elide: Text.ElideMiddle
        font.pixelSize: Theme.small
        text: work.engine.progressTitle + (elapsed.seconds > 0 ? " · " + elapsed.seconds + " s" : "")
        wrapMode: Text.NoWrap
    }
    Meter {
        Accessible.name: work.engine.progressTitle
        Layout.fillWidth: false
        Layout.preferredWidth: Theme.length(80)
        value: work.engine.progressShare
        visible: work.measured
    }
    ActionButton {
        Accessible.name: "Cancel: " + work.engine.progressTitle
        implicitHeight: Theme.length(26)
        objectName: "cancelModelWork"
        text: "Cancel"
        visible: work.engine.modelAtWork

        onClicked: work.engine.cancelModelWork()
    }
    Timer {
        id: elapsed

        property int seconds: 0

        interval: 1000
        repeat: true
        running: work.visible

        onRunningChanged: seconds = 0
        onTriggered: seconds += 1
    }
}
