pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// The few questions before an organisation's files are made.
Item {
    id: page

    required property BeginView begin
    required property real columnWidth
    property bool nameWanted: false
    readonly property real roleWidth: Theme.length(156)

    signal pageWanted(string name)

    objectName: "beginPage"

    PageColumn {
        anchors.bottom: foot.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        columnWidth: page.columnWidth

        Note {
            text: "All three can be changed later. What you leave as it is, is a good answer."
        }
        Card {
            heading: "1  What is the organisation called?"

            Field {
                id: name

                Accessible.name: "What is the organisation called?"
                Layout.fillWidth: true
                maximumLength: 200
                objectName: "organisationName"
                text: page.begin.organisation

                onTextEdited: page.begin.organisation = text
            }
            Note {
                font.pixelSize: Theme.small
                text: "It stands on the report and in each proof."
                visible: !wanted.visible
            }
            SymbolWords {
                id: wanted

                Accessible.name: text
                Accessible.role: Accessible.AlertMessage
                font.pixelSize: Theme.small
                symbol: "exclamationmark.circle"
                text: "A name is needed; it can be changed later."
                tint: Theme.open
                visible: page.nameWanted && !page.begin.named
            }
        }
        Card {
            heading: "2  Who does what?"

            Note {
                text: "One person may hold several roles. Names as in each person's account on the computer; yours is filled in."
            }
            Repeater {
                model: page.begin.people

                delegate: RowLayout {
                    id: row

                    required property int index
                    required property string role
                    required property int tasks
                    required property bool readonly
                    required property bool first
                    required property string person

                    spacing: Theme.s

                    ColumnLayout {
                        Layout.fillWidth: false
                        Layout.maximumWidth: page.roleWidth
                        Layout.minimumWidth: page.roleWidth
                        spacing: 0
                        visible: row.first

                        Words {
                            maximumLineCount: 2
                            text: row.role
                        }
                        Note {
                            font.pixelSize: Theme.small
                            text: row.readonly ? "sees all, changes nothing" : row.tasks === 1 ? "1 task" : row.tasks + " tasks"
                        }
                    }
                    Field {
                        Accessible.name: row.first ? row.role : "One more " + row.role
                        Layout.fillWidth: true
                        Layout.leftMargin: row.first ? 0 : page.roleWidth + row.spacing
                        Layout.rightMargin: more.visible ? 0 : more.implicitWidth + row.spacing
                        maximumLength: 200
                        placeholderText: "Not chosen yet"
                        text: row.person

                        onTextEdited: page.begin.setPerson(row.index, text)
                    }
                    ActionButton {
                        id: more

                        Accessible.name: "Another person for " + row.role
                        symbol: "plus"
                        visible: row.first && !row.readonly

                        onClicked: page.begin.addPerson(row.index)
                    }
                }
            }
        }
        Card {
            heading: "3  What do you have?"
            visible: page.begin.asksWhatThereIs

            Note {
                text: "What you switch off is left off the list. Its common criteria then have nothing behind them, and an auditor will ask why."
            }
            Toggle {
                Layout.fillWidth: true
                checked: page.begin.premises
                text: "Offices or hosting rooms of our own (CC6.4, CC6.5)"

                onToggled: page.begin.premises = checked
            }
            Toggle {
                Layout.fillWidth: true
                checked: page.begin.devices
                text: "Laptops and other devices of our own (CC6.6, CC6.7, CC6.8)"

                onToggled: page.begin.devices = checked
            }
        }
    }
    Foot {
        id: foot

        anchors.bottom: parent.bottom
        columnWidth: page.columnWidth
        text: "Nothing is written yet."
        width: parent.width

        ActionButton {
            objectName: "showPreview"
            text: "Show what will be written"
            weight: ActionButton.Prominent

            onClicked: {
                page.nameWanted = true;
                if (page.begin.prepare())
                    page.pageWanted("beginPreview");
                else
                    name.forceActiveFocus(Qt.OtherFocusReason);
            }
        }
    }
}
