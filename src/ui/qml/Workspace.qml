pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// The main page: the sections of the person's work, in their fixed order.
FocusScope {
    id: pane

    required property EngineView engine
    required property real columnWidth
    readonly property real margin: Theme.margin(width)
    readonly property alias atYBeginning: scroller.atYBeginning

    Scroller {
        id: scroller

        anchors.fill: parent
        contentHeight: form.height + pane.margin + covered
        covered: pane.engine.nextAction === "" ? 0 : reminder.height
        objectName: "rightScroller"

        ColumnLayout {
            id: form

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.m
            width: pane.columnWidth

            Card {
                heading: "Ask Pellum"
                objectName: "assistantSection"
                symbol: "apple.intelligence"

                PellumAssistant {
                    engine: pane.engine
                }
            }
            Section {
                shown: pane.engine.pending

                delegate: PendingSection {
                    engine: pane.engine
                    objectName: "pendingSection"
                }
            }
            Section {
                shown: !pane.engine.verified

                delegate: KYCSection {
                    engine: pane.engine
                    objectName: "kycSection"
                }
            }
            Section {
                shown: pane.engine.verified

                delegate: IdentitySection {
                    engine: pane.engine
                    objectName: "identitySection"
                }
            }
            NextActionSection {
                id: next

                engine: pane.engine
                objectName: "nextActionSection"
            }
            Section {
                shown: pane.engine.hasDraft

                delegate: GeneratedDocSection {
                    engine: pane.engine
                    objectName: "draftSection"
                }
            }
            Section {
                shown: pane.engine.roleWork === EngineView.RoleWork.audit

                delegate: AuditorVerifySection {
                    engine: pane.engine
                    objectName: "auditorSection"
                }
            }
            Section {
                shown: pane.engine.roleWork === EngineView.RoleWork.responsibilities

                delegate: ResponsibilitiesSection {
                    engine: pane.engine
                    objectName: "responsibilitiesSection"
                }
            }
            Section {
                shown: pane.engine.roleWork === EngineView.RoleWork.evidence

                delegate: EvidenceSection {
                    engine: pane.engine
                    objectName: "evidenceSection"
                }
            }
            Section {
                shown: pane.engine.roleWork === EngineView.RoleWork.evidence && pane.engine.hasMesh

                delegate: ReadinessSection {
                    engine: pane.engine
                    objectName: "readinessSection"
                }
            }
            OSSnapshotSection {
                engine: pane.engine
                objectName: "osSection"
            }
            ProvenanceSection {
                engine: pane.engine
                objectName: "provenanceSection"
            }
        }
    }

    // The next best action stays at hand while its card is out of view.
    Rectangle {
        id: reminder

        readonly property real cardEnd: next.y + next.height - Theme.l
        readonly property bool away: cardEnd > scroller.contentY + scroller.height || cardEnd < scroller.contentY + next.button.height

        anchors.bottom: parent.bottom
        color: Theme.card
        height: reminderRow.implicitHeight + 2 * Theme.m
        visible: away && pane.engine.nextAction !== ""
        width: parent.width

        Rectangle {
            color: Theme.line
            height: Theme.hairline
            width: parent.width
        }
        RowLayout {
            id: reminderRow

            anchors.centerIn: parent
            spacing: Theme.m
            width: form.width

            Words {
                font.weight: Font.DemiBold
                text: pane.engine.nextTitle
                wrapMode: Text.NoWrap
            }
            ActionButton {
                large: true
                objectName: "nextActionReminder"
                symbol: next.label[1]
                text: next.label[0]
                weight: ActionButton.Prominent

                onClicked: pane.engine.runNext()
            }
        }
    }
}
