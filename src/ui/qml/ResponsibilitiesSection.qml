pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// The tasks of the person's role and the way to complete each.
Card {
    id: section

    required property EngineView engine

    function label(close: string): string {
        // Fixed text, see docs/decisions.md.
        return close === "os" ? "Check this device" : close === "generate" ? "Generate" : "Acknowledge (Touch ID)";
    }
    function symbolFor(close: string): string {
        return close === "os" ? "checkmark.shield" : close === "generate" ? "doc.badge.gearshape" : "touchid";
    }

    heading: "Your responsibilities"

    Figure {
        caption: section.engine.closedControls + "/" + section.engine.controlCount + " of your tasks complete"
        text: section.engine.roleReadinessText
        value: section.engine.roleReadiness
    }
    Rows {
        id: rows

        label: "Your tasks"
        maximumHeight: Theme.length(780)
        model: section.engine.roleControls

        delegate: RowLayout {
            id: row

            required property int index
            required property string task
            required property string close
            required property bool closed

            Accessible.name: task + (closed ? ", done" : ", open")
            Accessible.role: Accessible.ListItem
            spacing: Theme.m
            width: rows.rowWidth

            Symbol {
                Layout.bottomMargin: Theme.m
                Layout.topMargin: Theme.m
                color: row.closed ? Theme.met : Theme.open
                implicitHeight: Theme.icon
                implicitWidth: Theme.icon
                name: row.closed ? "checkmark.seal.fill" : "circle"
            }
            Words {
                Layout.bottomMargin: Theme.s
                Layout.topMargin: Theme.s
                text: row.task
            }
            Words {
                Layout.fillWidth: false
                color: Theme.met
                font.weight: Font.DemiBold
                text: "Done"
                visible: row.closed
            }
            ActionButton {
                symbol: section.symbolFor(row.close)
                text: section.label(row.close)
                visible: !row.closed

                onClicked: section.engine.closeRoleControl(row.index)
            }
        }
    }
}
