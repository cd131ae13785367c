pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// What will be written where, before it is.
Item {
    id: page

    required property BeginView begin
    required property real columnWidth

    signal backWanted

    objectName: "beginPreviewPage"

    PageColumn {
        anchors.bottom: foot.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        columnWidth: page.columnWidth

        Lead {
            note: page.begin.summary
            sentence: "Two new files, nothing else."
            symbol: "folder"
            tint: Theme.accent
        }
        Card {
            Accessible.name: "The files"
            warning: page.begin.refusal !== ""

            Words {
                color: Theme.secondary
                font.family: Theme.fixedFamily
                font.pixelSize: Theme.small
                text: page.begin.folder
                wrapMode: Text.WrapAnywhere
            }
            Note {
                font.pixelSize: Theme.small
                text: "The folder is not there yet; it is made, too."
                visible: page.begin.folderIsNew
            }
            Rectangle {
                Layout.fillWidth: true
                color: Theme.line
                implicitHeight: Theme.hairline
            }
            Repeater {
                model: page.begin.files

                delegate: RowLayout {
                    id: file

                    required property var modelData

                    spacing: Theme.s

                    Symbol {
                        Layout.alignment: Qt.AlignTop
                        color: Theme.accent
                        implicitHeight: Theme.icon
                        implicitWidth: Theme.icon
                        name: "doc.badge.plus"
                    }
                    ColumnLayout {
                        spacing: 0

                        Words {
                            text: file.modelData.name
                        }
                        Note {
                            font.pixelSize: Theme.small
                            text: file.modelData.what
                        }
                    }
                    Note {
                        Layout.fillWidth: false
                        font.pixelSize: Theme.small
                        text: file.modelData.size
                    }
                }
            }
            Note {
                font.pixelSize: Theme.small
                text: "If a file of that name is there by then, nothing is written and you are told."
                visible: page.begin.refusal === ""
            }
            SymbolWords {
                Accessible.name: text
                Accessible.role: Accessible.AlertMessage
                objectName: "refusal"
                symbol: "exclamationmark.triangle.fill"
                text: page.begin.refusal
                tint: Theme.open
                visible: text !== ""
            }
        }
        Card {
            id: table

            readonly property real roleWidth: Theme.length(96)
            readonly property real dueWidth: Theme.length(72)
            readonly property real weightWidth: Theme.length(48)

            Accessible.name: "The criteria"

            RowLayout {
                Layout.rightMargin: rows.scrolls ? Theme.m - Theme.s : 0
                spacing: Theme.m

                Note {
                    font.pixelSize: Theme.small
                    text: "Criterion"
                }
                Note {
                    Layout.preferredWidth: table.roleWidth
                    Layout.fillWidth: false
                    font.pixelSize: Theme.small
                    text: "Role"
                }
                Note {
                    Layout.preferredWidth: table.dueWidth
                    Layout.fillWidth: false
                    font.pixelSize: Theme.small
                    text: "Due"
                }
                Note {
                    Layout.preferredWidth: table.weightWidth
                    Layout.fillWidth: false
                    font.pixelSize: Theme.small
                    horizontalAlignment: Text.AlignRight
                    text: "Weight"
                }
            }
            Rows {
                id: rows

                label: "The criteria"
                maximumHeight: Theme.length(1400)
                model: page.begin.criteria

                delegate: Item {
                    id: row

                    required property string criterion
                    required property string title
                    required property string role
                    required property string due
                    required property int weight

                    Accessible.name: title + ", " + criterion + ", " + role + ", " + due + ", weight " + weight
                    Accessible.role: Accessible.ListItem
                    implicitHeight: line.implicitHeight + 2 * Theme.xs + Theme.hairline
                    width: rows.rowWidth

                    Rectangle {
                        color: Theme.line
                        height: Theme.hairline
                        width: parent.width
                    }
                    RowLayout {
                        id: line

                        anchors.verticalCenter: parent.verticalCenter
                        spacing: Theme.m
                        width: parent.width

                        ColumnLayout {
                            spacing: 0

                            Words {
                                text: row.title
                            }
                            Note {
                                font.pixelSize: Theme.tiny
                                text: row.criterion
                            }
                        }
                        Note {
                            Layout.preferredWidth: table.roleWidth
                            Layout.fillWidth: false
                            font.pixelSize: Theme.small
                            text: row.role
                        }
                        Note {
                            Layout.preferredWidth: table.dueWidth
                            Layout.fillWidth: false
                            font.pixelSize: Theme.small
                            text: row.due
                        }
                        Words {
                            Layout.preferredWidth: table.weightWidth
                            Layout.fillWidth: false
                            horizontalAlignment: Text.AlignRight
                            text: row.weight
                        }
                    }
                }
            }
        }
    }
    Foot {
        id: foot

        anchors.bottom: parent.bottom
        columnWidth: page.columnWidth
        text: "Afterwards: verify who you are, and begin with the first task."
        width: parent.width

        ActionButton {
            text: "Change answers"

            onClicked: page.backWanted()
        }
        ActionButton {
            objectName: "writeFiles"
            text: "Write the two files"
            weight: ActionButton.Prominent

            onClicked: page.begin.write()
        }
    }
}
