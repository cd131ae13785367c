import QtQuick
import QtQuick.Layouts
import Kelvo

// Which days a piece of evidence speaks of, and where it came from.
Card {
    id: form

    required property AuditView audit
    required property string evidence
    required property int row
    property string fault: ""

    signal done

    heading: "Which days does " + evidence + " speak of?"
    objectName: "datesForm"

    Note {
        font.pixelSize: Theme.small
        text: "Two days are needed. The rest an auditor will ask. Leave empty what you do not know."
    }
    GridLayout {
        Layout.fillWidth: true
        columnSpacing: Theme.m
        columns: 2
        rowSpacing: Theme.s

        Words {
            Layout.fillWidth: false
            text: "First day"
        }
        Field {
            id: first

            Accessible.name: "First day it covers"
            Layout.preferredWidth: Theme.length(160)
            objectName: "coversFrom"
            placeholderText: "2026-01-01"
        }
        Words {
            Layout.fillWidth: false
            text: "Last day"
        }
        Field {
            id: last

            Accessible.name: "Last day it covers"
            Layout.preferredWidth: Theme.length(160)
            objectName: "coversTo"
            placeholderText: "2026-03-31"
        }
        Words {
            Layout.fillWidth: false
            text: "Made by"
        }
        Field {
            id: producedBy

            Accessible.name: "Made by"
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.length(360)
        }
        Words {
            Layout.fillWidth: false
            text: "Taken from"
        }
        Field {
            id: source

            Accessible.name: "Taken from"
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.length(360)
        }
        Words {
            Layout.fillWidth: false
            text: "How many in all"
        }
        Field {
            id: population

            Accessible.name: "How many in all"
            Layout.preferredWidth: Theme.length(160)
        }
    }
    SymbolWords {
        objectName: "datesFault"
        symbol: "exclamationmark.circle"
        text: form.fault
        tint: Theme.open
        visible: form.fault !== ""
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.s

        Item {
            Layout.fillWidth: true
        }
        ActionButton {
            text: "Cancel"

            onClicked: form.done()
        }
        ActionButton {
            objectName: "sealDates"
            symbol: "person.badge.shield.checkmark"
            text: "Record the dates"
            weight: ActionButton.Prominent

            onClicked: {
                form.fault = form.audit.setDates(form.row, first.text, last.text, producedBy.text, source.text, population.text);
                if (form.fault === "")
                    form.done();
            }
        }
    }
}
