import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import Kelvo

// The window: the model at the left, the person's workspace at the right.
ApplicationWindow {
    id: window

    required property EngineView engine
    required property ProofView proof
    required property BeginView begin
    required property AuditView audit
    // The desktop prefers dark surfaces.
    property bool dark: false

    color: Theme.window
    font.pixelSize: Theme.body
    minimumHeight: 560
    minimumWidth: 860
    title: "Kelvo SOC2 Engine"

    // What the toolkit draws by itself, like its file chooser where the desktop has none.
    palette {
        base: Theme.card
        button: Theme.card
        buttonText: Theme.text
        dark: Theme.line
        highlight: Theme.accentLine
        highlightedText: Theme.text
        light: Theme.well
        mid: Theme.line
        placeholderText: Theme.tertiary
        text: Theme.text
        window: Theme.window
        windowText: Theme.text
    }

    onClosing: close => {
        if (leaving.agreed || proof.closingQuestion === "")
            return;
        close.accepted = false;
        leaving.open();
    }

    ClosingQuestion {
        id: leaving

        proof: window.proof

        onLeave: window.close()
    }
    FolderDialog {
        id: elsewhere

        acceptLabel: "Save here"
        title: "Save a copy elsewhere"

        onAccepted: window.proof.saveUnwritten(selectedFolder)
    }
    Connections {
        function onSaveWanted() {
            elsewhere.open();
        }

        target: window.proof
    }
    Binding {
        property: "dark"
        target: Theme
        value: window.dark
    }
    FocusScope {
        anchors.fill: parent
        focus: true

        // A control or a field that has the focus takes the space for itself; only what nobody
        // wanted arrives here.
        Keys.onSpacePressed: event => {
            if (event.modifiers !== Qt.NoModifier || event.isAutoRepeat) {
                event.accepted = false;
                return;
            }
            left.toggle();
        }

        Keys.onEscapePressed: event => {
            event.accepted = right.current !== "";
            if (event.accepted)
                right.back();
        }

        SplitView {
            anchors.fill: parent
            orientation: Qt.Horizontal

            handle: Rectangle {
                id: handle

                color: SplitHandle.hovered || SplitHandle.pressed ? Theme.accent : Theme.line
                implicitWidth: Theme.hairline

                containmentMask: Item {
                    height: handle.height
                    width: Theme.s
                    x: -Theme.s / 2
                }
            }

            LeftPane {
                id: left

                SplitView.maximumWidth: window.width * 0.5
                SplitView.minimumWidth: Math.min(Theme.length(280), window.width * 0.45)
                SplitView.preferredWidth: Math.max(Theme.length(300), window.width * 0.34)
                engine: window.engine
                proof: window.proof

                onPageWanted: name => right.openPage(name)
            }
            RightPane {
                id: right

                SplitView.fillWidth: true
                audit: window.audit
                begin: window.begin
                engine: window.engine
                proof: window.proof
            }
        }
    }
}
