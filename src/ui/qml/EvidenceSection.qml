pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// Uploads a document and confirms which criteria it is evidence for.
Card {
    id: section

    required property EngineView engine
    // The criterion ids that are switched on.
    property var selected: []
    readonly property bool suggested: engine.proposalCriteria.length > 0

    function select(id: string, on: bool) {
        selected = on ? selected.concat([id]) : selected.filter(each => each !== id);
    }
    function refill() {
        selected = Array.from(engine.proposalCriteria);
    }

    heading: "Evidence"

    Component.onCompleted: refill()

    Connections {
        function onProposalChanged() {
            section.refill();
        }

        target: section.engine
    }
    Note {
        // Fixed text, see docs/decisions.md.
        text: "Upload a document. Apple Intelligence reads it on your Mac and suggests which criteria it satisfies."
    }
    ActionButton {
        symbol: "doc.badge.plus"
        text: "Add evidence (upload doc)"

        onClicked: section.engine.addEvidence()
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: Theme.s
        visible: section.engine.hasProposal

        Rectangle {
            Layout.bottomMargin: Theme.xs
            Layout.fillWidth: true
            color: Theme.line
            implicitHeight: Theme.hairline
        }
        SymbolWords {
            font.bold: true
            symbol: "doc.text"
            text: section.engine.proposalName
        }
        Note {
            font.pixelSize: Theme.small
            text: section.engine.proposalSummary
        }
        Words {
            Layout.topMargin: Theme.xs
            font.weight: Font.DemiBold
            text: section.suggested ? "Suggested criteria — toggle to confirm:" : "No criteria suggested — choose from open gaps manually:"
        }
        Repeater {
            model: !section.engine.hasProposal ? [] : section.suggested ? section.engine.proposalCriteria : section.engine.openGaps

            delegate: Toggle {
                required property string modelData

                Layout.fillWidth: true
                checked: section.selected.includes(modelData)
                text: modelData

                onToggled: section.select(modelData, checked)
            }
        }
        ActionButton {
            Layout.topMargin: Theme.xs
            enabled: section.selected.length > 0
            symbol: "touchid"
            text: "Approve & seal evidence"
            weight: ActionButton.Tinted

            onClicked: section.engine.confirmEvidence(section.selected)
        }
    }
}
