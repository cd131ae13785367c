import QtQuick
import QtQuick.Layouts
import Kelvo

// One decision: what it was about, the evidence, who sealed it and when; what the kept file says.
ColumnLayout {
    id: row

    required property int index
    required property string title
    required property string detail
    required property string symbol
    required property string result
    required property bool amber
    required property bool kept
    required property bool missing
    required property ProofView proof

    Accessible.name: title + ", " + detail + (result === "" ? "" : ". " + result)
    Accessible.role: Accessible.ListItem
    spacing: 0

    Rectangle {
        Layout.fillWidth: true
        color: Theme.line
        implicitHeight: Theme.hairline
        visible: row.index > 0
    }
    RowLayout {
        Layout.bottomMargin: Theme.s
        Layout.fillWidth: true
        Layout.topMargin: Theme.s
        spacing: Theme.m

        Symbol {
            Layout.alignment: Qt.AlignTop
            color: row.amber ? Theme.open : row.kept ? Theme.accent : Theme.tertiary
            implicitHeight: Theme.icon
            implicitWidth: Theme.icon
            name: row.symbol
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.hairline * 2

            Words {
                font.weight: Font.DemiBold
                maximumLineCount: 3
                text: row.title
            }
            Note {
                font.pixelSize: Theme.small
                text: row.detail
            }
            Words {
                color: row.amber ? Theme.open : Theme.secondary
                font.pixelSize: Theme.small
                text: row.result
                visible: text !== ""
            }
        }
        ActionButton {
            Accessible.name: "View the evidence of " + row.title
            text: "View evidence"
            visible: row.kept

            onClicked: row.proof.viewEvidence(row.index)
        }
        ActionButton {
            Accessible.name: "Verify the evidence of " + row.title
            enabled: row.proof.mayVerify
            text: "Verify"
            visible: row.kept

            onClicked: row.proof.verifyEvidence(row.index)
        }
        ActionButton {
            Accessible.name: "Supply the evidence of " + row.title
            enabled: row.proof.mayMend
            text: "Supply the file…"
            visible: row.missing

            onClicked: row.proof.supplyEvidence(row.index)
        }
    }
}
