pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// The person's workspace, and the pages that lie over it. A page stays as it was left (its place,
// what was typed) for as long as the window lives; the last one opened is on top.
Page {
    id: pane

    required property EngineView engine
    required property ProofView proof
    required property BeginView begin
    required property AuditView audit
    readonly property real columnWidth: Math.min(width - 2 * Theme.margin(width), Theme.length(820))
    // Page names, the one on top last.
    property var opened: []
    // A page is made when it is first opened, and kept from then on.
    property var made: []
    readonly property string current: opened.length > 0 ? opened[opened.length - 1] : ""
    readonly property var titles: ({
            "": pane.title,
            "evidence": "Evidence",
            "handOver": "Hand-over",
            "proof": "Proof",
            "checkpoint": "Checkpoint",
            "check": "Check a checkpoint",
            "begin": "Begin: a few questions",
            "beginPreview": "Begin: what will be written"
        })
    // What had the focus when the first page was opened.
    property Item opener: null

    function openPage(name: string) {
        if (name === current)
            return;
        if (current === "")
            opener = pane.Window.activeFocusItem;
        if (!made.includes(name))
            made = made.concat([name]);
        const at = opened.indexOf(name);
        opened = at < 0 ? opened.concat([name]) : opened.slice(0, at + 1);
        header.focusTitle();
    }
    // These pages are over and done with.
    function forget(names: list<string>) {
        const over = name => names.includes(name);
        if (over(current))
            pane.forceActiveFocus(Qt.OtherFocusReason);
        opened = opened.filter(name => !over(name));
        made = made.filter(name => !over(name));
    }
    function back() {
        opened = opened.slice(0, -1);
        if (current !== "")
            header.focusTitle();
        else if (opener)
            opener.forceActiveFocus(Qt.OtherFocusReason);
        else
            pane.forceActiveFocus(Qt.OtherFocusReason);
    }

    title: "Ferrow — HITL"

    background: Rectangle {
        color: Theme.window
    }
    header: ColumnLayout {
        id: header

        function focusTitle() {
            head.focusTitle();
        }

        spacing: 0

        PaneHeader {
            id: head

            audit: pane.audit
            columnWidth: pane.columnWidth
            engine: pane.engine
            page: pane.current
            proof: pane.proof
            ruled: pane.current === "" && !workspace.atYBeginning
            title: pane.titles[pane.current]

            onBackPressed: pane.back()
            onPageWanted: name => pane.openPage(name)
        }
        TroubleLine {
            columnWidth: pane.columnWidth
            proof: pane.proof
            visible: sentence !== "" && (pane.current !== "proof" || kind === ProofView.Trouble.notice)

            onPageWanted: name => pane.openPage(name)
        }
    }

    Workspace {
        id: workspace

        anchors.fill: parent
        begin: pane.begin
        columnWidth: pane.columnWidth
        bannerHeight: banner.covering
        engine: pane.engine
        visible: pane.current === ""
    }
    Section {
        shown: pane.made.includes("evidence")

        delegate: EvidencePage {
            anchors.fill: parent
            audit: pane.audit
            columnWidth: pane.columnWidth
            visible: pane.current === "evidence"
        }
    }
    Section {
        shown: pane.made.includes("handOver")

        delegate: HandOverPage {
            anchors.fill: parent
            audit: pane.audit
            columnWidth: pane.columnWidth
            visible: pane.current === "handOver"
        }
    }
    Section {
        shown: pane.made.includes("proof")

        delegate: ProofPage {
            anchors.fill: parent
            columnWidth: pane.columnWidth
            proof: pane.proof
            visible: pane.current === "proof"

            onPageWanted: name => pane.openPage(name)
        }
    }
    Section {
        shown: pane.made.includes("checkpoint")

        delegate: CheckpointPage {
            anchors.fill: parent
            columnWidth: pane.columnWidth
            proof: pane.proof
            visible: pane.current === "checkpoint"
        }
    }
    Section {
        shown: pane.made.includes("check")

        delegate: CheckPage {
            anchors.fill: parent
            columnWidth: pane.columnWidth
            proof: pane.proof
            visible: pane.current === "check"
        }
    }
    Section {
        shown: pane.made.includes("begin")

        delegate: BeginPageQuestions {
            anchors.fill: parent
            begin: pane.begin
            columnWidth: pane.columnWidth
            visible: pane.current === "begin"

            onPageWanted: name => pane.openPage(name)
        }
    }
    Section {
        shown: pane.made.includes("beginPreview")

        delegate: BeginPagePreview {
            anchors.fill: parent
            begin: pane.begin
            columnWidth: pane.columnWidth
            visible: pane.current === "beginPreview"

            onBackWanted: pane.back()
        }
    }
    Banner {
        id: banner

        // A page with a decision keeps its foot in view.
        readonly property real foot: workspace.visible ? workspace.footHeight : pane.current.startsWith("begin") ? Theme.length(64) : 0

        columnWidth: pane.columnWidth
        engine: pane.engine
        proof: pane.proof
        width: parent.width
        y: parent.height - height - foot
    }
    Connections {
        function onListTaken() {
            pane.openPage("begin");
        }
        function onStageChanged() {
            if (pane.begin.stage === BeginView.Stage.done)
                pane.forget(["begin", "beginPreview"]);
        }

        target: pane.begin
    }
    Connections {
        function onCheckpointMade() {
            pane.openPage("checkpoint");
        }

        target: pane.proof
    }
}
