pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// One way to begin: what it is, its button, and what else is to be said of it.
Rectangle {
    id: way

    property alias heading: heading.text
    property alias note: note.text
    property alias action: button.text
    property alias actionName: button.objectName
    property bool prominent: false
    property var faults: []
    default property alias content: words.data

    signal chosen

    Layout.fillWidth: true
    border.color: faults.length > 0 ? Theme.warningLine : prominent ? Theme.accentLine : Theme.line
    border.width: Theme.hairline
    color: faults.length > 0 ? Theme.warningSoft : prominent ? Theme.accentSoft : Theme.well
    implicitHeight: column.implicitHeight + 2 * Theme.m
    radius: Theme.controlRadius

    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.margins: Theme.m
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.s

        RowLayout {
            spacing: Theme.m

            ColumnLayout {
                id: words

                spacing: Theme.hairline * 2

                Words {
                    id: heading

                    font.weight: Font.DemiBold
                }
                Note {
                    id: note

                    font.pixelSize: Theme.small
                }
            }
            ActionButton {
                id: button

                weight: way.prominent ? ActionButton.Prominent : ActionButton.Plain

                onClicked: way.chosen()
            }
        }
        Rows {
            id: rows

            label: "What keeps the list from being taken"
            maximumHeight: Theme.length(180)
            model: way.faults
            objectName: "faults"
            spacing: Theme.xs
            visible: count > 0

            delegate: SymbolWords {
                required property int index
                required property string modelData

                Accessible.name: text
                Accessible.role: Accessible.ListItem
                font.pixelSize: Theme.small
                symbol: "exclamationmark.circle"
                text: modelData + (index === 0 ? " Nothing was written." : "")
                tint: Theme.open
                width: rows.rowWidth
            }
        }
    }
}
