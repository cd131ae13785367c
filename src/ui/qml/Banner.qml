pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Kelvo

// What came of the last action, told where the person looks: each new status word for word, for a
// few seconds, and the last twenty on demand.
Rectangle {
    id: banner

    required property EngineView engine
    required property ProofView proof
    required property real columnWidth

    readonly property int longest: 20
    // Newest first: words, a neighbour in bold, the time, whether a checkpoint can be made here.
    property var told: []
    property bool shown: false
    property bool unfolded: false
    property int unwritten: 0
    property bool reminded: false
    readonly property real covering: visible ? height : 0

    signal pageWanted(string name)

    function tell(words: string, note: string, checkpoint: bool) {
        const time = new Date().toLocaleTimeString(Qt.locale(), "HH:mm");
        told = [
            {
                words,
                note,
                time,
                checkpoint
            }
        ].concat(told).slice(0, longest);
        shown = true;
        patience.restart();
    }
    function close() {
        shown = false;
        unfolded = false;
    }
    // A decision and that it is not on the disk are said together.
    function tellStatus() {
        const more = proof.unwrittenCount > unwritten;
        unwritten = proof.unwrittenCount;
        tell(engine.status, more ? "Not on disk yet." : "", false);
    }
    function tellProof() {
        if (!reminded && proof.checkpointReminder !== "") {
            reminded = true;
            tell(proof.checkpointReminder, "", true);
        }
        if (unwritten > 0 && proof.unwrittenCount === 0)
            tell(unwritten === 1 ? "Written: 1 decision is on disk." : "Written: %1 decisions are on disk.".arg(unwritten), "", false);
        unwritten = proof.unwrittenCount;
    }

    Accessible.name: told.length > 0 ? (told[0].words + " " + told[0].note).trim() : ""
    Accessible.role: Accessible.Notification
    color: Theme.card
    height: rows.implicitHeight + 2 * Theme.s
    objectName: "banner"
    visible: shown

    Component.onCompleted: tellProof()

    Connections {
        function onStatusChanged() {
            status.restart();
        }

        target: banner.engine
    }
    Connections {
        function onChanged() {
            proofLook.restart();
        }

        target: banner.proof
    }
    // What else the same event changes is known by then; the status comes first.
    Timer {
        id: status

        interval: 0

        onTriggered: banner.tellStatus()
    }
    Timer {
        id: proofLook

        interval: 0

        onTriggered: if (status.running)
            restart();
        else
            banner.tellProof()
    }
    Timer {
        id: patience

        interval: 8000
        running: banner.shown && !banner.unfolded && !pointer.hovered && !earlier.visualFocus && !closing.visualFocus && !making.visualFocus

        onTriggered: banner.close()
    }
    HoverHandler {
        id: pointer
    }
    Rectangle {
        color: Theme.line
        height: Theme.hairline
        width: parent.width
    }
    ColumnLayout {
        id: rows

        anchors.centerIn: parent
        spacing: Theme.xs
        width: banner.columnWidth

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.s

            Symbol {
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: (latest.lineHeightOfOne - height) / 2
                color: Theme.accent
                implicitHeight: Theme.icon
                implicitWidth: Theme.icon
                name: "info.circle"
            }
            Words {
                id: latest

                readonly property real lineHeightOfOne: Math.max(Theme.length(24), Theme.controlHeight)

                // The banner itself speaks.
                Accessible.ignored: true
                Layout.fillWidth: true
                Layout.minimumHeight: lineHeightOfOne
                objectName: "bannerWords"
                text: banner.told.length > 0 ? banner.told[0].words : ""
                verticalAlignment: Text.AlignVCenter
            }
            Words {
                font.weight: Font.DemiBold
                objectName: "bannerNote"
                text: banner.told.length > 0 ? banner.told[0].note : ""
                visible: text !== ""
                wrapMode: Text.NoWrap
            }
            ActionButton {
                id: making

                objectName: "bannerCheckpoint"
                text: "Make a checkpoint"
                visible: banner.told.length > 0 && banner.told[0].checkpoint
                weight: ActionButton.Tinted

                onClicked: {
                    banner.close();
                    banner.proof.makeCheckpoint();
                }
            }
            Note {
                Layout.fillWidth: false
                font.pixelSize: Theme.small
                text: banner.told.length > 0 ? banner.told[0].time : ""
                wrapMode: Text.NoWrap
            }
            LinkButton {
                id: earlier

                objectName: "bannerEarlier"
                text: banner.unfolded ? "Fold" : "Earlier"
                visible: banner.told.length > 1

                onClicked: banner.unfolded = !banner.unfolded
            }
            LinkButton {
                id: closing

                Accessible.name: "Close this message"
                objectName: "bannerClose"
                text: "Close"

                onClicked: banner.close()
            }
        }
        ListView {
            Accessible.name: "Earlier messages"
            Accessible.role: Accessible.List
            Layout.fillWidth: true
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            implicitHeight: Math.min(contentHeight, Theme.length(160))
            model: banner.unfolded ? banner.told.slice(1) : []
            objectName: "bannerList"
            spacing: Theme.xs
            visible: banner.unfolded

            delegate: RowLayout {
                id: row

                required property var modelData

                spacing: Theme.s
                width: ListView.view.width

                Note {
                    Layout.alignment: Qt.AlignTop
                    Layout.fillWidth: false
                    font.pixelSize: Theme.small
                    text: row.modelData.time
                    wrapMode: Text.NoWrap
                }
                TextEdit {
                    Accessible.name: text
                    Accessible.readOnly: true
                    Accessible.role: Accessible.StaticText
                    Layout.fillWidth: true
                    activeFocusOnPress: false
                    color: Theme.secondary
                    font.pixelSize: Theme.small
                    readOnly: true
                    selectByMouse: true
                    text: (row.modelData.words + " " + row.modelData.note).trim()
                    textFormat: TextEdit.PlainText
                    wrapMode: Text.Wrap
                }
            }
        }
    }
}
