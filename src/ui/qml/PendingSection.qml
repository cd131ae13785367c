import QtQuick
import Kelvo

// A staged state that waits for the person's approval.
Card {
    id: section

    required property EngineView engine

    Accessible.name: "Pending measurement"
    warning: true

    SymbolWords {
        font.pixelSize: Theme.heading
        font.weight: Font.DemiBold
        symbol: "exclamationmark.triangle.fill"
        text: "Pending measurement"
        tint: Theme.open
    }
    Words {
        text: "A state is staged. Approve to record it on the chain."
    }
    ActionButton {
        symbol: "touchid"
        text: "Bond — approve & seal"
        weight: ActionButton.Tinted

        onClicked: section.engine.bondCollapse()
    }
}
