import QtQuick
import QtQuick.Layouts
import Kelvo

// The audit period: what the report will be about.
Card {
    id: form

    required property AuditView audit
    property bool type2: true
    property string fault: ""

    signal done

    heading: "Audit period"
    objectName: "periodForm"

    RowLayout {
        spacing: Theme.s

        ActionButton {
            Accessible.checkable: true
            Accessible.checked: form.type2
            objectName: "typeTwo"
            text: "Type II, a span of days"
            weight: form.type2 ? ActionButton.Tinted : ActionButton.Plain

            onClicked: form.type2 = true
        }
        ActionButton {
            Accessible.checkable: true
            Accessible.checked: !form.type2
            objectName: "typeOne"
            text: "Type I, one day"
            weight: form.type2 ? ActionButton.Plain : ActionButton.Tinted

            onClicked: form.type2 = false
        }
    }
    GridLayout {
        Layout.fillWidth: true
        columnSpacing: Theme.m
        columns: 2
        rowSpacing: Theme.s

        Words {
            Layout.fillWidth: false
            text: form.type2 ? "First day" : "The day"
        }
        Field {
            id: first

            Accessible.name: form.type2 ? "First day" : "The day"
            Layout.preferredWidth: Theme.length(160)
            objectName: "periodFrom"
            text: form.audit.periodFrom
        }
        Words {
            Layout.fillWidth: false
            text: "Last day"
            visible: form.type2
        }
        Field {
            id: last

            Accessible.name: "Last day"
            Layout.preferredWidth: Theme.length(160)
            objectName: "periodTo"
            text: form.audit.periodTo
            visible: form.type2
        }
        Words {
            Layout.fillWidth: false
            text: "Audit firm"
        }
        Field {
            id: firm

            Accessible.name: "Audit firm"
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.length(360)
            objectName: "periodFirm"
            placeholderText: "Leave empty if there is none yet"
            text: form.audit.firm
        }
    }
    SymbolWords {
        objectName: "periodFault"
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
            objectName: "sealPeriod"
            symbol: "person.badge.shield.checkmark"
            text: "Set the period"
            weight: ActionButton.Prominent

            onClicked: {
                form.fault = form.audit.setPeriod(form.type2, first.text, last.text, firm.text);
                if (form.fault === "")
                    form.done();
            }
        }
    }
}
