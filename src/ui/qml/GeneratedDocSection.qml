import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Kelvo

// A drafted policy, to be read and then approved or discarded.
Card {
    id: section

    required property EngineView engine

    heading: "Review generated policy"

    Note {
        // Fixed text, see docs/decisions.md.
        text: "Apple Intelligence wrote this policy on your Mac from " + section.engine.draftCriterion + "'s own facts. Read it, then approve to record it."
    }
    SymbolWords {
        font.weight: Font.DemiBold
        symbol: "doc.text"
        text: "Policy draft for " + section.engine.draftCriterion
    }
    ScrollView {
        id: scroll

        Layout.fillWidth: true
        Layout.preferredHeight: Math.max(Theme.length(140), Math.min(Theme.length(280), draft.implicitHeight))
        ScrollBar.horizontal.policy: ScrollBar.AlwaysOff
        ScrollBar.vertical: ThinScrollBar {
            anchors.bottom: scroll.bottom
            anchors.right: scroll.right
            anchors.top: scroll.top
        }

        background: Rectangle {
            border.color: draft.activeFocus ? Theme.accent : Theme.line
            border.width: draft.activeFocus ? Theme.focusWidth : Theme.hairline
            color: Theme.well
            radius: Theme.controlRadius
        }

        TextArea {
            id: draft

            Accessible.name: "Policy draft"
            KeyNavigation.priority: KeyNavigation.BeforeItem
            KeyNavigation.tab: approve
            color: Theme.text
            font.pixelSize: Theme.body
            leftPadding: Theme.m
            objectName: "draft"
            readOnly: true
            rightPadding: Theme.l
            selectByMouse: true
            selectedTextColor: Theme.accentText
            selectionColor: Theme.accent
            text: section.engine.draftText
            textFormat: TextEdit.PlainText
            wrapMode: TextArea.Wrap

            background: null
        }
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.s

        ActionButton {
            id: approve

            symbol: "touchid"
            // Fixed text, see docs/decisions.md.
            text: "Approve & seal (Touch ID)"
            weight: ActionButton.Tinted

            onClicked: section.engine.approveGenerated()
        }
        ActionButton {
            text: "Discard"

            onClicked: section.engine.discardGenerated()
        }
        Note {
            horizontalAlignment: Text.AlignRight
            font.pixelSize: Theme.small
            objectName: "draftPlaces"
            text: section.engine.draftPlaces
        }
    }
    Repeater {
        model: section.engine.draftQuestions

        delegate: SymbolWords {
            required property string modelData

            font.pixelSize: Theme.small
            symbol: "questionmark.circle"
            text: modelData
            tint: Theme.open
        }
    }
}
