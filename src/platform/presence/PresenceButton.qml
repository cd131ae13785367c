import QtQuick

// A push button of the presence prompt.
Rectangle {
    id: button

    required property string text
    required property var colors
    property bool primary: false
    signal clicked

    implicitWidth: Math.max(96, label.implicitWidth + 32)
    implicitHeight: label.implicitHeight + 16
    radius: 8
    opacity: enabled ? 1 : 0.45
    color: primary ? (area.pressed ? colors.accentPressed : colors.accent)
                   : (area.pressed ? colors.line : colors.raised)
    border.width: activeFocus ? 2 : 1
    border.color: activeFocus ? colors.focus : (primary ? color : colors.line)
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: button.clicked()

    Keys.onSpacePressed: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    Text {
        id: label
        anchors.centerIn: parent
        text: button.text
        textFormat: Text.PlainText
        font.pixelSize: 14
        font.weight: button.primary ? Font.DemiBold : Font.Normal
        color: button.primary ? button.colors.onAccent : button.colors.text
    }

    MouseArea {
        id: area
        anchors.fill: parent
        onClicked: button.clicked()
    }
}
