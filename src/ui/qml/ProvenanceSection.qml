pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// Every claim with the rule, kernel step or gate that produced it, newest first.
Card {
    id: section

    required property EngineView engine

    heading: "Provenance"

    Rows {
        id: rows

        label: "Provenance"
        maximumHeight: Theme.length(420)
        model: section.engine.citations
        spacing: Theme.m

        delegate: ColumnLayout {
            id: row

            required property string claim
            required property string source
            required property string asOf

            Accessible.name: claim + ". " + source + ". " + asOf
            Accessible.role: Accessible.ListItem
            spacing: Theme.hairline * 2
            width: rows.rowWidth

            Words {
                text: row.claim
            }
            Note {
                font.pixelSize: Theme.small
                text: row.source
            }
            Note {
                color: Theme.tertiary
                font.pixelSize: Theme.tiny
                text: row.asOf
            }
        }
    }
}
