pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Kelvo

// A choice of one from a short list.
ComboBox {
    id: picker

    font.pixelSize: Theme.body
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.m
    rightPadding: Theme.xl + Theme.xs

    background: Rectangle {
        border.color: Theme.controlLine
        color: picker.hovered ? Theme.hover : Theme.card
        radius: Theme.controlRadius

        FocusRing {
            shown: picker.visualFocus
        }
    }
    contentItem: Text {
        Accessible.ignored: true
        color: picker.enabled ? Theme.text : Theme.disabledText
        elide: Text.ElideRight
        font: picker.font
        text: picker.displayText
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
    }
    delegate: ItemDelegate {
        id: entry

        required property int index
        required property string modelData

        Accessible.name: modelData
        highlighted: picker.highlightedIndex === index
        width: ListView.view ? ListView.view.width : 0

        background: Rectangle {
            color: entry.highlighted ? Theme.accentSoft : "transparent"
            radius: Theme.xs
        }
        contentItem: Text {
            color: Theme.text
            elide: Text.ElideRight
            font: picker.font
            text: entry.modelData
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter
        }
    }
    indicator: Text {
        Accessible.ignored: true
        color: Theme.secondary
        font.pixelSize: Theme.body
        text: "▾"
        x: picker.width - width - Theme.m
        y: (picker.height - height) / 2
    }
    popup: Popup {
        implicitHeight: Math.min(choices.contentHeight + 2 * padding, Theme.length(260))
        padding: Theme.xs
        width: picker.width
        y: picker.height + Theme.xs

        background: Rectangle {
            border.color: Theme.controlLine
            color: Theme.card
            radius: Theme.controlRadius
        }
        contentItem: ListView {
            id: choices

            clip: true
            currentIndex: picker.highlightedIndex
            model: picker.popup.visible ? picker.delegateModel : null

            ScrollBar.vertical: ThinScrollBar {
            }
        }
    }
}
