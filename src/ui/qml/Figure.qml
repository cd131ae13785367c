import QtQuick
import QtQuick.Layouts
import Kelvo

// A share of a whole, large: the figure in a ring that fills, a caption and a bar.
RowLayout {
    id: figure

    required property double value
    required property string text
    required property string caption
    property real size: Theme.length(118)

    Layout.fillWidth: true
    spacing: Theme.l

    Ring {
        Accessible.ignored: true
        color: figure.value >= 1 ? Theme.met : Theme.accent
        implicitHeight: figure.size
        implicitWidth: figure.size
        thickness: figure.size * 0.085
        trackColor: Theme.track
        value: figure.value

        Behavior on value {
            NumberAnimation {
                duration: Theme.calm
                easing.type: Easing.OutCubic
            }
        }

        Words {
            anchors.centerIn: parent
            font.bold: true
            font.pixelSize: figure.size * 0.19
            text: figure.text
            wrapMode: Text.NoWrap
        }
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: Theme.s

        Words {
            text: figure.caption
        }
        Meter {
            Accessible.name: figure.caption
            value: figure.value
        }
    }
}
