import QtQuick
import Kelvo

// The one next best action of the person, with the most prominent button of the window.
Card {
    id: section

    required property EngineView engine
    readonly property alias button: button
    readonly property var labels: ({
            "closeGap": ["Close with evidence", "paperclip"],
            "generate": ["Generate policy", "doc.badge.gearshape"],
            "play": ["Fire (Play)", "play.fill"],
            "pause": ["Checkpoint", "pause.fill"],
            "throttle": ["Reduce exposure", "arrow.down.right.circle"],
            "bond": ["Approve & Save", "touchid"],
            "kyc": ["Verify identity", "person.badge.shield.checkmark"],
            "snapshot": ["Refresh OS snapshot", "checkmark.shield"]
        })
    readonly property var label: labels[engine.nextAction] || ["", ""]

    emphasized: true
    heading: "Your Next Best Action"

    Words {
        font.pixelSize: Theme.headline
        font.weight: Font.DemiBold
        text: section.engine.nextTitle
    }
    Note {
        text: section.engine.nextDetail
        visible: text !== ""
    }
    ActionButton {
        id: button

        large: true
        objectName: "nextAction"
        symbol: section.label[1]
        text: section.label[0]
        visible: section.engine.nextAction !== ""
        weight: ActionButton.Prominent

        onClicked: section.engine.runNext()
    }
}
