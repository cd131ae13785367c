import QtQuick
import QtQuick.Layouts
import Kelvo

// Chooses a role and proves the person's identity.
Card {
    id: section

    required property EngineView engine
    // The role chosen in the picker; empty where there is none to choose.
    property string chosen: ""
    readonly property string firstRole: engine.availableRoles.length > 0 ? engine.availableRoles[0] : ""

    heading: "Get started"

    Component.onCompleted: if (chosen === "")
        chosen = firstRole

    Note {
        text: "Pick your role, then confirm it's you. You'll only see the security tasks that are yours."
    }
    GridLayout {
        Layout.fillWidth: true
        columnSpacing: Theme.m
        columns: section.width < Theme.length(520) ? 1 : 3
        rowSpacing: Theme.s

        Words {
            Layout.fillWidth: false
            text: "Your role"
        }
        Picker {
            Accessible.name: "Your role"
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.length(280)
            currentIndex: Array.from(section.engine.availableRoles).indexOf(section.chosen || section.firstRole)
            displayText: currentIndex < 0 ? section.engine.whyNoRole : currentText
            enabled: section.engine.availableRoles.length > 0
            model: section.engine.availableRoles

            onActivated: index => section.chosen = section.engine.availableRoles[index]
        }
        ActionButton {
            enabled: section.engine.mayTakeRole
            symbol: "person.badge.shield.checkmark"
            text: "Verify identity as " + (section.chosen || section.firstRole || "user")
            weight: ActionButton.Tinted

            onClicked: section.engine.verifyKYC(section.chosen || section.firstRole || "Owner")
        }
    }
    Note {
        color: Theme.tertiary
        font.pixelSize: Theme.small
        text: "Here: your password or fingerprint, by this computer's own login."
    }
}
