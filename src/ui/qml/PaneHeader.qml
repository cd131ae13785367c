import QtQuick
import QtQuick.Layouts
import Kelvo

// The head of the right pane: where the person is, the way back, what is under way, the figure and
// the menu. It looks the same over every page, so that nothing in it jumps.
Item {
    id: head

    required property EngineView engine
    required property ProofView proof
    required property AuditView audit
    required property real columnWidth
    required property string page
    required property string title
    property bool ruled: false

    signal backPressed
    signal pageWanted(string name)

    function focusTitle() {
        heading.forceActiveFocus(Qt.OtherFocusReason);
    }

    Layout.fillWidth: true
    implicitHeight: Theme.length(52)

    RowLayout {
        anchors.horizontalCenter: parent.horizontalCenter
        height: parent.height
        spacing: Theme.s
        width: head.columnWidth

        ActionButton {
            Accessible.name: "Back"
            objectName: "back"
            symbol: "chevron.left"
            visible: head.page !== ""

            onClicked: head.backPressed()
        }
        Words {
            id: heading

            Accessible.role: Accessible.Heading
            Layout.fillWidth: !work.visible
            Layout.minimumWidth: implicitWidth
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
            objectName: "pageTitle"
            text: head.title
        }
        Work {
            id: work

            engine: head.engine
        }
        Ring {
            Accessible.ignored: true
            color: head.engine.readiness >= 1 ? Theme.met : Theme.accent
            implicitHeight: Theme.length(34)
            implicitWidth: Theme.length(34)
            thickness: Theme.length(5)
            trackColor: Theme.track
            value: head.engine.readiness
            visible: head.engine.hasMesh

            Behavior on value {
                NumberAnimation {
                    duration: Theme.calm
                    easing.type: Easing.OutCubic
                }
            }
        }
        Words {
            Accessible.name: "Readiness " + text
            Layout.fillWidth: false
            font.bold: true
            font.pixelSize: Theme.figure
            text: head.engine.readinessText
            visible: head.engine.hasMesh
        }
        PaneMenu {
            audit: head.audit
            proof: head.proof

            onPageWanted: name => head.pageWanted(name)
        }
    }
    Rectangle {
        color: Theme.line
        height: Theme.hairline
        visible: head.ruled
        width: parent.width
        y: parent.height - height
    }
}
