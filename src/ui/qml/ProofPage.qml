pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// How records, logs, evidence and checkpoints stand to one another, and what to do about it.
PageColumn {
    id: page

    required property ProofView proof
    readonly property bool whole: proof.standing === ProofView.Standing.whole

    signal pageWanted(string name)

    objectName: "proofPage"

    Lead {
        note: page.proof.note
        sentence: page.proof.headline
        symbol: page.proof.standing === ProofView.Standing.look ? "exclamationmark.triangle.fill" : page.whole
                                                         ? "checkmark.seal.fill" : "link"
        tint: page.proof.standing === ProofView.Standing.look ? Theme.open : page.whole ? Theme.met : Theme.tertiary
    }
    Repeater {
        model: page.proof.cards

        delegate: ProofCardView {
            proof: page.proof
        }
    }
    CheckpointCard {
        proof: page.proof

        onCheckWanted: page.pageWanted("check")
    }
    Card {
        heading: "Logs"
        visible: logs.count > 0

        Repeater {
            id: logs

            model: page.proof.logs

            delegate: RowLayout {
                id: log

                required property string line
                required property string note
                required property bool whole

                Accessible.name: line + ", " + note
                Accessible.role: Accessible.ListItem
                spacing: Theme.m

                Symbol {
                    Layout.alignment: Qt.AlignTop
                    color: log.whole ? Theme.met : Theme.open
                    implicitHeight: Theme.icon
                    implicitWidth: Theme.icon
                    name: log.whole ? "checkmark.circle.fill" : "exclamationmark.circle"
                }
                ColumnLayout {
                    spacing: Theme.hairline * 2

                    Words {
                        text: log.line
                    }
                    Note {
                        font.pixelSize: Theme.small
                        text: log.note
                    }
                }
            }
        }
    }
    DecisionsCard {
        proof: page.proof
    }
}
