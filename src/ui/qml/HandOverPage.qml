pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import Kelvo

// From the period to a package that an auditor can check alone.
PageColumn {
    id: page

    required property AuditView audit
    property bool asking: false
    property bool anyway: false
    readonly property bool busy: audit.stage === AuditView.Stage.reading || audit.stage === AuditView.Stage.writing

    function handOver(regardless: bool) {
        anyway = regardless;
        into.open();
    }

    objectName: "handOverPage"

    Lead {
        note: "A folder: evidence, records, log and sheets. Checked with ordinary tools, without this program and without you."
        sentence: page.audit.stage === AuditView.Stage.written ? "Handed over to " + page.audit.recipient : "A package that an auditor can check alone"
        symbol: "doc.on.doc"
        tint: Theme.accent
    }
    Card {
        heading: "Handed over to " + page.audit.recipient
        objectName: "handedOver"
        visible: page.audit.stage === AuditView.Stage.written

        Note {
            text: "Package number"
        }
        Words {
            font.family: Theme.fixedFamily
            objectName: "packageNumber"
            text: page.audit.number
        }
        Note {
            font.pixelSize: Theme.small
            text: "Tell it by another way than the package: by telephone, on paper, in a message of its own. It tells this package from every other."
        }
        Words {
            font.pixelSize: Theme.small
            text: page.audit.packageName + " in " + page.audit.packageFolder
            wrapMode: Text.WrapAnywhere
        }
        RowLayout {
            spacing: Theme.s

            ActionButton {
                objectName: "openPackage"
                symbol: "folder"
                text: "Open the folder"
                weight: ActionButton.Tinted

                onClicked: page.audit.openPackage()
            }
            ActionButton {
                text: "Copy"

                onClicked: page.audit.copyNumber()
            }
        }
        Note {
            font.pixelSize: Theme.small
            text: "The auditor checks it in that folder by: sh check.sh"
        }
    }
    Card {
        heading: "Writing the package"
        visible: page.busy

        Note {
            text: "You can go on working; nothing that is decided meanwhile goes in."
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.m

            Meter {
                Layout.fillWidth: true
                value: page.audit.share
            }
            ActionButton {
                enabled: page.audit.stage === AuditView.Stage.writing
                text: "Stop"

                onClicked: page.audit.stop()
            }
        }
    }
    Card {
        heading: page.audit.stage === AuditView.Stage.refused ? "Nothing was handed over yet" : "The package could not be written"
        objectName: "handOverReasons"
        visible: page.audit.stage === AuditView.Stage.refused || page.audit.stage === AuditView.Stage.failed
        warning: true

        Repeater {
            model: page.audit.reasons

            delegate: SymbolWords {
                required property string modelData

                symbol: "exclamationmark.circle"
                text: modelData
                tint: Theme.open
            }
        }
        Note {
            font.pixelSize: Theme.small
            text: "You can hand over what there is; the package will say so."
            visible: anyway.visible
        }
        ActionButton {
            id: anyway

            objectName: "handOverAnyway"
            text: "Hand over anyway"
            visible: page.audit.stage === AuditView.Stage.refused && page.audit.hasPeriod

            onClicked: page.handOver(true)
        }
    }
    Card {
        heading: "Period"
        visible: page.audit.mayDecide && !page.asking

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.s

            Words {
                objectName: "periodWords"
                text: page.audit.hasPeriod ? page.audit.periodWords : "There is no audit period yet."
            }
            ActionButton {
                objectName: "changePeriod"
                text: page.audit.hasPeriod ? "Change…" : "Set the period…"
                weight: page.audit.hasPeriod ? ActionButton.Plain : ActionButton.Prominent

                onClicked: page.asking = true
            }
        }
        Note {
            font.pixelSize: Theme.small
            text: page.audit.figures
        }
    }
    Section {
        shown: page.asking

        delegate: PeriodForm {
            audit: page.audit

            onDone: page.asking = false
        }
    }
    Card {
        heading: "What goes in"

        Words {
            text: page.audit.contents
        }
    }
    Card {
        heading: "The report's own documents"
        visible: page.audit.mayDecide

        Repeater {
            model: page.audit.documents

            delegate: RowLayout {
                id: document

                required property int index
                required property var modelData

                Layout.fillWidth: true
                spacing: Theme.s

                ColumnLayout {
                    spacing: 0

                    Words {
                        text: document.modelData.title
                    }
                    Note {
                        font.pixelSize: Theme.small
                        text: document.modelData.name || "not there yet"
                    }
                }
                ActionButton {
                    Accessible.name: "Add the " + document.modelData.title
                    text: "Add…"

                    onClicked: page.audit.addDocument(document.index)
                }
            }
        }
    }
    Card {
        heading: "Hand over"
        visible: page.audit.mayDecide

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.m

            Words {
                Layout.fillWidth: false
                text: "For"
            }
            Field {
                id: recipient

                Accessible.name: "Who the package is for"
                Layout.fillWidth: true
                objectName: "recipient"
                placeholderText: "Jane Doe, Example CPA LLP"
            }
            ActionButton {
                enabled: page.audit.hasPeriod && !page.busy && recipient.text.trim() !== ""
                objectName: "handOver"
                symbol: "person.badge.shield.checkmark"
                text: "Hand over…"
                weight: page.audit.hasPeriod ? ActionButton.Prominent : ActionButton.Plain

                onClicked: page.handOver(false)
            }
        }
        Note {
            font.pixelSize: Theme.small
            text: "You choose a folder, then you are asked to confirm. Whoever holds the package can read it: it is not encrypted."
        }
    }
    FolderDialog {
        id: into

        acceptLabel: "Hand over into this folder"
        title: "Into which folder?"

        onAccepted: page.audit.handOver(recipient.text, selectedFolder, page.anyway)
    }
}
