pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// The running model and the one control that runs it.
Page {
    id: pane

    required property EngineView engine
    required property ProofView proof

    signal pageWanted(string name)

    function toggle() {
        if (engine.running)
            engine.pause();
        else
            engine.play();
    }

    background: Rectangle {
        color: Theme.pane
    }
    footer: Rectangle {
        color: Theme.card
        implicitHeight: bar.implicitHeight + 2 * Theme.m

        Rectangle {
            color: Theme.line
            height: Theme.hairline
            width: parent.width
        }
        ColumnLayout {
            id: bar

            anchors.left: parent.left
            anchors.leftMargin: Theme.m
            anchors.right: parent.right
            anchors.rightMargin: Theme.m
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.s

            Words {
                // The status row itself may be scrolled away; what it says may not.
                Accessible.ignored: true
                color: Theme.secondary
                font.pixelSize: Theme.small
                horizontalAlignment: Text.AlignHCenter
                maximumLineCount: 2
                text: pane.engine.status
                visible: scroller.contentY > statusRow.mapToItem(form, 0, 0).y + statusRow.height
            }
            ActionButton {
                Layout.fillWidth: true
                large: true
                objectName: "runButton"
                symbol: pane.engine.running ? "pause.fill" : "play.fill"
                text: pane.engine.running ? "Pause" : "Play"
                weight: ActionButton.Tinted

                onClicked: pane.toggle()
            }
        }
    }

    Scroller {
        id: scroller

        anchors.fill: parent
        contentHeight: form.height + 2 * Theme.m
        objectName: "leftScroller"

        ColumnLayout {
            id: form

            spacing: Theme.m
            width: scroller.width - 2 * Theme.m
            x: Theme.m
            y: Theme.m

            Card {
                heading: "State (totem-time)"

                ValueRow {
                    name: "t"
                    value: pane.engine.t
                }
                ValueRow {
                    name: "risk (∫R·f²)"
                    value: pane.engine.risk
                }
                ValueRow {
                    name: "totems on chain"
                    value: pane.engine.totemCount
                }
                Note {
                    text: "equations"
                }
                Words {
                    Accessible.name: "equations: " + text
                    // The text ends with a line feed.
                    Layout.bottomMargin: -Theme.m
                    Layout.topMargin: -Theme.s
                    font.family: Theme.fixedFamily
                    font.pixelSize: Theme.small
                    maximumLineCount: 14
                    objectName: "equations"
                    text: pane.engine.equations
                }
                Rectangle {
                    id: statusRow

                    Layout.fillWidth: true
                    color: Theme.well
                    implicitHeight: statusWords.implicitHeight + 2 * Theme.s
                    radius: Theme.controlRadius

                    ColumnLayout {
                        id: statusWords

                        anchors.left: parent.left
                        anchors.margins: Theme.s
                        anchors.right: parent.right
                        anchors.verticalCenter: parent.verticalCenter
                        spacing: Theme.hairline * 2

                        Note {
                            font.pixelSize: Theme.small
                            text: "status"
                        }
                        Words {
                            Accessible.name: "status: " + text
                            Accessible.role: Accessible.AlertMessage
                            font.weight: Font.Medium
                            objectName: "status"
                            text: pane.engine.status
                        }
                    }
                }
                TracePicture {
                    Accessible.name: "Dissipation rate and states over totem-time"
                    Accessible.role: Accessible.Chart
                    Layout.fillWidth: true
                    engine: pane.engine
                    implicitHeight: Theme.length(170)
                    inkColor: Theme.text
                    limitColor: Theme.open
                    lineColor: Theme.line
                    quietColor: Theme.secondary
                    rateColor: Theme.accent
                    stateColors: Theme.series
                    textSize: Theme.small
                }
                BondGraphPicture {
                    id: picture

                    Accessible.name: description
                    Accessible.role: Accessible.Graphic
                    Layout.fillWidth: true
                    engine: pane.engine
                    implicitHeight: Math.min(width, Theme.length(190 + 6 * nodeCount))
                    inkColor: Theme.text
                    quietColor: Theme.tertiary
                    resistorColor: Theme.open
                    sourceColor: Theme.accent
                    storageColor: Theme.met
                    surfaceColor: Theme.card
                    textSize: Theme.body

                    Tip {
                        text: picture.pointedAt
                        visible: text !== ""
                        x: Math.max(0, Math.min(picture.width - width, picture.pointer.x - width / 2))
                        y: picture.pointer.y - height - Theme.m
                    }
                }
            }
            Card {
                heading: "Chain"

                Rows {
                    id: rows

                    label: "Chain"
                    maximumHeight: Theme.length(260)
                    model: pane.engine.totems
                    spacing: Theme.s
                    visible: count > 0

                    delegate: SymbolWords {
                        required property string line

                        Accessible.name: line
                        Accessible.role: Accessible.ListItem
                        font.pixelSize: Theme.small
                        maximumLineCount: 2
                        symbol: "link"
                        text: line
                        tint: Theme.tertiary
                        width: rows.rowWidth
                    }
                }
                Note {
                    font.pixelSize: Theme.small
                    text: pane.proof.earlierRecords > 0 ? "Nothing is sealed in this run yet." : "Nothing is sealed yet. What you approve appears here."
                    visible: rows.count === 0
                }
                RowLayout {
                    Layout.fillWidth: true
                    spacing: Theme.s
                    visible: pane.proof.earlierRecords > 0

                    Note {
                        font.pixelSize: Theme.small
                        objectName: "earlierRecords"
                        text: (pane.proof.earlierRecords === 1 ? "1 earlier record is in %1." : pane.proof.earlierRecords + " earlier records are in %1.").arg(pane.proof.outputsFolder)
                    }
                    LinkButton {
                        Accessible.name: "Show the earlier records"
                        Layout.alignment: Qt.AlignTop
                        objectName: "showEarlier"
                        text: "Show"

                        onClicked: pane.pageWanted("proof")
                    }
                }
            }
        }
    }
}
