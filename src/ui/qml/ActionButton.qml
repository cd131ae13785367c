import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// A button with an optional symbol, at one of three weights: prominent, tinted or plain.
Button {
    id: button

    enum Weight {
        Plain,
        Tinted,
        Prominent
    }

    property int weight: ActionButton.Plain
    property string symbol: ""
    property bool large: false
    readonly property color ink: !enabled ? Theme.disabledText : weight === ActionButton.Prominent
                                           ? Theme.accentText : weight === ActionButton.Tinted ? Theme.accent : Theme.text

    Accessible.name: text
    Layout.maximumWidth: Layout.fillWidth ? Infinity : implicitWidth
    bottomPadding: 0
    implicitHeight: large ? Theme.length(40) : Theme.controlHeight
    leftPadding: text === "" ? Theme.s : large ? Theme.l : Theme.m
    rightPadding: leftPadding
    topPadding: 0

    background: Rectangle {
        border.color: button.weight === ActionButton.Plain ? Theme.controlLine : button.weight
                                                            === ActionButton.Tinted ? Theme.accentLine : "transparent"
        border.width: button.weight === ActionButton.Prominent ? 0 : Theme.hairline
        color: {
            if (!button.enabled)
                return button.weight === ActionButton.Plain ? "transparent" : Theme.track;
            if (button.weight === ActionButton.Prominent)
                return button.down ? Theme.accentPressed : button.hovered ? Theme.accentHover : Theme.accent;
            if (button.weight === ActionButton.Tinted)
                return button.down || button.hovered ? Theme.accentSoftHover : Theme.accentSoft;
            return button.down ? Theme.track : button.hovered ? Theme.hover : Theme.card;
        }
        radius: Theme.controlRadius

        FocusRing {
            shown: button.visualFocus
        }
    }
    contentItem: Item {
        implicitHeight: row.implicitHeight
        implicitWidth: row.implicitWidth

        RowLayout {
            id: row

            anchors.centerIn: parent
            spacing: Theme.s
            width: Math.min(implicitWidth, parent.width)

            Symbol {
                color: button.ink
                implicitHeight: Theme.icon
                implicitWidth: Theme.icon
                name: button.symbol
                visible: button.symbol !== ""
            }
            Text {
                id: label

                Accessible.ignored: true
                Layout.fillWidth: true
                color: button.ink
                elide: Text.ElideRight
                font.pixelSize: Theme.body
                font.weight: button.weight === ActionButton.Plain ? Font.Normal : Font.DemiBold
                text: button.text
                textFormat: Text.PlainText
                visible: text !== ""
            }
        }
    }

    Tip {
        text: button.text
        visible: button.hovered && label.truncated
    }
}
