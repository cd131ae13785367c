pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// What the evidence of each criterion carries over the audit period.
PageColumn {
    id: page

    required property AuditView audit
    property bool asking: false
    // The row whose evidence is being dated; none below 0.
    property int dating: -1
    property string datingName: ""

    objectName: "evidencePage"

    Lead {
        note: page.audit.periodWords
        sentence: page.audit.headline
        symbol: "doc.text"
        tint: Theme.accent
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.s

        Words {
            font.weight: Font.DemiBold
            objectName: "figures"
            text: page.audit.figures
        }
        ActionButton {
            objectName: "askPeriod"
            text: page.audit.hasPeriod ? "Period…" : "Set the period…"
            visible: page.audit.mayDecide && !page.asking
            weight: page.audit.hasPeriod ? ActionButton.Plain : ActionButton.Prominent

            onClicked: page.asking = true
        }
    }
    Section {
        shown: page.asking

        delegate: PeriodForm {
            audit: page.audit

            onDone: page.asking = false
        }
    }
    Section {
        shown: page.dating >= 0

        delegate: DatesForm {
            audit: page.audit
            evidence: page.datingName
            row: page.dating

            onDone: page.dating = -1
        }
    }
    Card {
        heading: "Criteria"
        visible: rows.count > 0

        Rows {
            id: rows

            label: "Criteria and what their evidence carries"
            maximumHeight: Theme.length(1200)
            model: page.audit.criteria
            spacing: Theme.m

            delegate: RowLayout {
                id: row

                required property string criterion
                required property string title
                required property string standing
                required property string words
                required property string detail
                required property string evidence
                required property int index
                required property var cells

                Accessible.name: (title !== "" ? criterion + ", " + title : criterion) + ", " + detail + ", " + words
                Accessible.role: Accessible.ListItem
                spacing: Theme.m
                width: rows.rowWidth

                ColumnLayout {
                    Layout.fillWidth: true
                    Layout.preferredWidth: Theme.length(260)
                    spacing: 0

                    Words {
                        text: row.title || row.criterion
                    }
                    LinkButton {
                        Accessible.name: "Set the dates of " + row.evidence
                        objectName: "dates-" + row.criterion
                        text: "Set the dates…"
                        visible: row.evidence !== "" && page.audit.mayDecide

                        onClicked: {
                            page.datingName = row.evidence;
                            page.dating = row.index;
                            page.contentY = 0;
                        }
                    }
                    Note {
                        color: Theme.tertiary
                        font.pixelSize: Theme.small
                        text: row.title === "" ? row.detail : row.criterion + " · " + row.detail
                    }
                }
                DayStrip {
                    Layout.alignment: Qt.AlignVCenter
                    Layout.fillWidth: true
                    Layout.preferredWidth: Theme.length(200)
                    cells: row.cells
                }
                SymbolWords {
                    readonly property bool carries: row.standing === "supported" || row.standing === "attested"

                    Layout.fillWidth: false
                    Layout.preferredWidth: Theme.length(130)
                    symbol: row.standing === "supported" ? "checkmark.circle.fill" : carries ? "quote.bubble" : row.standing === "open" ? "circle" : "exclamationmark.circle"
                    text: row.words
                    tint: carries ? Theme.met : row.standing === "open" ? Theme.tertiary : Theme.open
                }
            }
        }
    }
    Card {
        heading: "What the words mean"

        Note {
            font.pixelSize: Theme.small
            text: "Supported: documents or device readings cover every time that was due. Attested: every time is covered, at least one only by somebody's word. Partial, stale: some, none of the times due are covered. Undated: the evidence names no days. Missing: its file is not here. Withdrawn: taken back by a note. Declared: called met without a sealed decision. Open: not met."
        }
    }
}
