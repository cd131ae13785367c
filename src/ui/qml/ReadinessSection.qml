pragma ComponentBehavior: Bound
import QtQuick
import Kelvo

// Readiness over all criteria, and each criterion with its gap.
Card {
    id: section

    required property EngineView engine

    heading: "SOC 2 readiness"

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

            note: row.met ? "" : row.gap
            width: rows.rowWidth

            ActionButton {
                Accessible.name: "Generate policy for " + row.criterion
                text: "Generate policy"
                visible: !row.met

                onClicked: section.engine.generatePolicy(row.criterion)
            }
        }
    }
}
