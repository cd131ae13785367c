pragma ComponentBehavior: Bound
import QtQuick
import Kelvo

// Readiness for a role that looks and changes nothing.
Card {
    id: section

    required property EngineView engine

    heading: "Verify (read-only)"

    Note {
        text: "You have read-only access. Review the readiness and each criterion's state."
    }
    Figure {
        // Fixed text, see docs/decisions.md.
        caption: section.engine.metCount + "/13 criteria met · solved Σ(g·w)/Σw"
        text: section.engine.readinessText
        value: section.engine.readiness
    }
    Rows {
        id: rows

        label: "Criteria"
        maximumHeight: Theme.length(780)
        model: section.engine.criteria

        delegate: CriterionRow {
            id: row

            note: row.met ? "met" : row.gap
            openSymbol: "exclamationmark.circle"
            small: true
            width: rows.rowWidth
        }
    }
    ActionButton {
        symbol: "checkmark.arrow.trianglehead.counterclockwise"
        text: "Re-solve verified"

        onClicked: section.engine.snapshotOS()
    }
}
