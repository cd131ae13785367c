pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// Every decision, newest first, and the evidence that was kept of it.
Card {
    id: card

    required property ProofView proof

    heading: "What was decided, and the evidence"
    visible: proof.decisionCount > 0

    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.m

        Field {
            Layout.maximumWidth: Theme.length(240)
            Layout.fillWidth: true
            objectName: "findDecision"
            placeholderText: "Find by id, name or person"

            onTextChanged: card.proof.find = text
        }
        Item {
            Layout.fillWidth: true
        }
        Note {
            Layout.fillWidth: false
            font.pixelSize: Theme.small
            text: card.proof.decisionCount + ", newest first"
        }
    }
    Words {
        color: Theme.secondary
        text: "No decision has “" + card.proof.find + "” in its id, name or person."
        visible: rows.count === 0
    }
    Rows {
        id: rows

        label: "What was decided"
        maximumHeight: Theme.length(520)
        model: card.proof.decisions
        objectName: "decisionRows"

        delegate: DecisionRow {
            proof: card.proof
            width: rows.rowWidth
        }
    }
}
