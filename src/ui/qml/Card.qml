import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// One section: an optional heading and what belongs to it, on a surface of its own.
Pane {
    id: card

    property string heading: ""
    property string symbol: ""
    property bool emphasized: false
    property bool warning: false
    default property alias content: column.data

    Accessible.name: heading
    Accessible.role: Accessible.Grouping
    Layout.fillWidth: true
    focusPolicy: Qt.NoFocus
    padding: Theme.l

    background: Rectangle {
        border.color: card.emphasized ? Theme.accentLine : card.warning ? Theme.warningLine : Theme.line
        border.width: Theme.hairline
        color: card.emphasized ? Theme.accentSoft : card.warning ? Theme.warningSoft : Theme.card
        radius: Theme.radius
    }
    contentItem: ColumnLayout {
        id: column

        spacing: Theme.m

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.s
            visible: card.heading !== ""

            Symbol {
                color: Theme.accent
                implicitHeight: Theme.icon
                implicitWidth: Theme.icon
                name: card.symbol
                visible: card.symbol !== ""
            }
            Words {
                Accessible.role: Accessible.Heading
                color: card.emphasized ? Theme.accent : Theme.text
                font.pixelSize: Theme.heading
                font.weight: Font.DemiBold
                text: card.heading
            }
        }
    }
}
