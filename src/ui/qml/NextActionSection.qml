import QtQuick
import Kelvo

// The one next best action of the person, with the most prominent button of the window.
Card {
    id: section

    required property EngineView engine
    readonly property alias button: button

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
        symbol: section.engine.nextSymbol
        text: section.engine.nextAction
        visible: section.engine.nextAction !== ""
        weight: ActionButton.Prominent

        onClicked: section.engine.runNext()
    }
}
