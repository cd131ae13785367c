pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// One thing that wants a look, what it means and what can be done.
Card {
    id: card

    required property int index
    required property string title
    required property string symbol
    required property string name
    required property string detail
    required property string words
    required property string note
    required property bool amber
    required property var members
    required property var actions
    required property ProofView proof

    Accessible.name: title
    warning: amber

    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.m

        Symbol {
            Layout.alignment: Qt.AlignTop
            color: card.amber ? Theme.open : Theme.tertiary
            implicitHeight: Theme.icon
            implicitWidth: Theme.icon
            name: card.symbol
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.hairline * 2

            Words {
                Accessible.role: Accessible.Heading
                font.weight: Font.DemiBold
                text: card.title
            }
            Note {
                font.pixelSize: Theme.small
                text: card.name
                visible: text !== ""
                wrapMode: Text.WrapAnywhere
            }
            Note {
                font.pixelSize: Theme.small
                text: card.detail
                visible: text !== ""
            }
        }
    }
    GridLayout {
        Layout.fillWidth: true
        columnSpacing: Theme.m
        columns: 3
        rowSpacing: Theme.xs
        visible: card.members.length > 0

        Item {
            implicitHeight: 1
        }
        Note {
            font.pixelSize: Theme.small
            text: "as sealed"
        }
        Note {
            font.pixelSize: Theme.small
            text: "in the folder now"
        }
        Repeater {
            model: card.members.length * 3

            delegate: Words {
                required property int index
                readonly property var entry: card.members[Math.floor(index / 3)]
                readonly property int part: index % 3

                Accessible.name: part === 0 ? text : (part === 1 ? "as sealed " : "now ") + text
                Layout.fillWidth: part > 0
                color: part === 2 ? Theme.open : part === 0 ? Theme.secondary : Theme.text
                font.family: part === 0 ? card.font.family : Theme.fixedFamily
                font.pixelSize: Theme.small
                maximumLineCount: 4
                text: part === 0 ? entry.member : part === 1 ? entry.sealed : entry.now
                wrapMode: Text.WrapAnywhere
            }
        }
    }
    Words {
        color: Theme.secondary
        text: card.words
        visible: text !== ""
    }
    Flow {
        Layout.fillWidth: true
        spacing: Theme.s

        Repeater {
            model: card.actions

            delegate: ActionButton {
                required property int index
                required property var modelData

                enabled: modelData.asks ? card.proof.mayDecide : modelData.mends ? card.proof.mayMend : true
                symbol: modelData.asks ? "touchid" : ""
                text: modelData.label
                weight: index === 0 && card.index === 0 ? ActionButton.Prominent : ActionButton.Plain

                onClicked: card.proof.runAction(card.index, index)
            }
        }
        Note {
            font.pixelSize: Theme.small
            height: Theme.controlHeight
            text: card.note
            verticalAlignment: Text.AlignVCenter
            visible: text !== ""
        }
    }
}
