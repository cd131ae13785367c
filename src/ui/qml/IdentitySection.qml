import QtQuick
import Kelvo

// Who is at the keyboard, once they have proved it.
Card {
    id: section

    required property EngineView engine

    Accessible.name: "Identity"
    bottomPadding: Theme.m
    topPadding: Theme.m

    SymbolWords {
        font.weight: Font.DemiBold
        symbol: "person.crop.circle.badge.checkmark"
        text: "You are: " + section.engine.principal + " · " + section.engine.role
        tint: Theme.met
    }
}
