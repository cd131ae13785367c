pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// What a checkpoint is for, and the ways to make one, check one and see earlier ones.
Card {
    id: card

    required property ProofView proof
    property bool unfolded: false
    readonly property bool sealedYet: proof.standing === ProofView.Standing.whole || proof.standing === ProofView.Standing.look

    signal checkWanted

    heading: "Checkpoint"

    Words {
        color: Theme.secondary
        text: "A short text that fixes everything until now. Once somebody else holds it, nothing before it can be changed, removed or dated back unnoticed."
    }
    Flow {
        Layout.fillWidth: true
        spacing: Theme.s

        ActionButton {
            enabled: card.proof.mayDecide && card.sealedYet
            objectName: "makeCheckpoint"
            text: "Make a checkpoint"
            weight: card.proof.standing === ProofView.Standing.whole ? ActionButton.Prominent : ActionButton.Plain

            onClicked: card.proof.makeCheckpoint()
        }
        ActionButton {
            objectName: "checkCheckpoint"
            text: "Check a checkpoint…"

            onClicked: card.checkWanted()
        }
        ActionButton {
            Accessible.name: (card.unfolded ? "Fold " : "Show ") + text
            text: card.proof.checkpointCount + " earlier"
            visible: card.proof.checkpointCount > 0

            onClicked: card.unfolded = !card.unfolded
        }
    }
    Note {
        font.pixelSize: Theme.small
        text: "The owner makes checkpoints. Verify who you are first."
        visible: card.sealedYet && !card.proof.mayDecide
    }
    Repeater {
        model: card.unfolded ? card.proof.checkpoints : []

        delegate: RowLayout {
            id: earlier

            required property int index
            required property string modelData

            spacing: Theme.m

            Words {
                text: earlier.modelData
            }
            ActionButton {
                Accessible.name: "Show the checkpoint of " + earlier.modelData
                text: "Show"

                onClicked: card.proof.showCheckpoint(earlier.index)
            }
        }
    }
}
