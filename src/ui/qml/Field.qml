import QtQuick
import QtQuick.Controls
import Kelvo

// A one-line text field with a rounded border.
TextField {
    id: field

    Accessible.name: placeholderText
    color: Theme.text
    font.pixelSize: Theme.body
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.m
    placeholderTextColor: Theme.tertiary
    rightPadding: Theme.m
    selectByMouse: true
    selectedTextColor: Theme.accentText
    selectionColor: Theme.accent

    background: Rectangle {
        border.color: field.activeFocus ? Theme.accent : Theme.controlLine
        border.width: field.activeFocus ? Theme.focusWidth : Theme.hairline
        color: Theme.card
        radius: Theme.controlRadius
    }
}
