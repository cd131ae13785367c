pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// The main page: the sections of the person's work, in their fixed order.
FocusScope {
    id: pane

    required property EngineView engine
    required property BeginView begin
    required property real columnWidth
    // Of what lies over the foot of the page for a while.
    property real bannerHeight: 0
    readonly property real footHeight: reminder.visible ? reminder.height : 0
    readonly property real margin: Theme.margin(width)
    readonly property alias atYBeginning: scroller.atYBeginning
    readonly property bool beginning: begin.stage !== BeginView.Stage.done
    // Where the card is by which to begin, until the person goes elsewhere.
    property Item beginCard: null
    property bool moved: false

    function showBeginning() {
        if (beginCard && !moved)
            scroller.contentY = Math.max(0, Math.min(beginCard.y, scroller.contentHeight - scroller.height));
    }

    Connections {
        function onYChanged() {
            pane.showBeginning();
        }

        target: pane.beginCard
    }

    // From the card the person goes on to who they are, which is at the top.
    onBeginningChanged: if (!beginning && beginCard)
        scroller.contentY = 0

    Scroller {
        id: scroller

        anchors.fill: parent
        contentHeight: form.height + pane.margin + covered
        covered: (pane.engine.nextAction === "" ? 0 : reminder.height) + pane.bannerHeight
        objectName: "rightScroller"

        onContentHeightChanged: pane.showBeginning()
        onHeightChanged: pane.showBeginning()
        onMovementStarted: pane.moved = true

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
            Section {
                shown: pane.beginning

                delegate: BeginCard {
                    begin: pane.begin
                    objectName: "beginSection"

                    Component.onCompleted: pane.beginCard = this
                    Component.onDestruction: pane.beginCard = null
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
        // It rests while the card by which to begin is in view.
        readonly property bool begins: pane.beginCard !== null && pane.beginCard.y < scroller.contentY + scroller.height && pane.beginCard.y + pane.beginCard.height > scroller.contentY
        readonly property bool away: cardEnd > scroller.contentY + scroller.height || cardEnd < scroller.contentY + next.button.height

        anchors.bottom: parent.bottom
        color: Theme.card
        height: reminderRow.implicitHeight + 2 * Theme.m
        visible: away && pane.engine.nextAction !== "" && !begins
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
                symbol: pane.engine.nextSymbol
                text: pane.engine.nextAction
                weight: ActionButton.Prominent

                onClicked: pane.engine.runNext()
            }
        }
    }
}
