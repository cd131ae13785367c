pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Kelvo

// The menu of the pages that lie over the workspace.
ActionButton {
    id: button

    required property ProofView proof
    required property AuditView audit

    signal pageWanted(string name)

    Accessible.name: "Menu"
    Accessible.role: Accessible.ButtonMenu
    objectName: "menuButton"
    symbol: "line.3.horizontal"

    onClicked: menu.visible ? menu.close() : menu.popup(button, button.width - menu.width, button.height + Theme.xs)

    Shortcut {
        sequences: ["F10", "Alt+M"]

        onActivated: button.clicked()
    }
    Shortcut {
        sequence: "Ctrl+1"

        onActivated: button.pageWanted("evidence")
    }
    Shortcut {
        enabled: button.audit.mayDecide
        sequence: "Ctrl+3"

        onActivated: button.pageWanted("handOver")
    }
    Shortcut {
        sequence: "Ctrl+2"

        onActivated: button.pageWanted("proof")
    }
    Menu {
        id: menu

        objectName: "menu"
        padding: Theme.xs
        width: Theme.length(220)

        background: Rectangle {
            border.color: Theme.controlLine
            color: Theme.card
            radius: Theme.controlRadius
        }
        PaneMenuItem {
            keys: "Ctrl+1"
            symbol: "doc.text"
            text: "Evidence"

            onTriggered: button.pageWanted("evidence")
        }
        PaneMenuItem {
            keys: "Ctrl+2"
            needsLook: button.proof.standing === ProofView.Standing.look
            symbol: "link"
            text: "Proof"

            onTriggered: button.pageWanted("proof")
        }
        PaneMenuItem {
            height: visible ? implicitHeight : 0
            keys: "Ctrl+3"
            symbol: "doc.on.doc"
            text: "Hand-over"
            visible: button.audit.mayDecide

            onTriggered: button.pageWanted("handOver")
        }
    }
}
