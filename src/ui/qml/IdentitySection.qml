import QtQuick
import QtQuick.Layouts
import Kelvo

// Who is at the keyboard, once they have proved it.
Card {
    id: section

    required property EngineView engine

    Accessible.name: "Identity"
    bottomPadding: Theme.m
    topPadding: Theme.m

    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.s

        SymbolWords {
            font.weight: Font.DemiBold
            symbol: "person.crop.circle.badge.checkmark"
            text: "You are: " + section.engine.principal + " · " + section.engine.role
            tint: Theme.met
        }
        LinkButton {
            Accessible.description: "Takes this identity off, so that somebody else can verify theirs. Nothing is recorded."
            objectName: "notYou"
            text: "Not you?"

            onClicked: section.engine.leaveIdentity()
        }
    }
    Note {
        color: Theme.tertiary
        font.pixelSize: Theme.small
        text: "Here: your password or fingerprint, by this computer's own login."
    }
}
