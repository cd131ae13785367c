pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// The computer's own security settings.
Card {
    id: section

    required property EngineView engine

    heading: "OS snapshot (read-only)"

    Note {
        // Fixed text, see docs/decisions.md.
        text: "We read your Mac's security settings without changing anything."
    }
    Rows {
        id: rows

        label: "Security settings"
        model: section.engine.osFacts

        delegate: RowLayout {
            id: row

            required property string key
            required property string value
            required property bool ok

            Accessible.name: key + ": " + value + (ok ? "" : ", needs attention")
            Accessible.role: Accessible.ListItem
            spacing: Theme.s
            width: rows.rowWidth

            Symbol {
                Layout.bottomMargin: Theme.xs
                Layout.topMargin: Theme.xs
                color: row.ok ? Theme.met : Theme.open
                implicitHeight: Theme.icon
                implicitWidth: Theme.icon
                name: row.ok ? "checkmark.circle.fill" : "exclamationmark.circle"
            }
            Words {
                text: row.key
            }
            Words {
                Layout.fillWidth: false
                Layout.maximumWidth: row.width * 0.5
                color: Theme.secondary
                horizontalAlignment: Text.AlignRight
                text: row.value
            }
        }
    }
    ActionButton {
        symbol: "arrow.clockwise"
        text: "Refresh"

        onClicked: section.engine.snapshotOS()
    }
}
