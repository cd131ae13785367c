import QtQuick
import QtQuick.Layouts
import Kelvo

// A section that exists only while its condition holds.
Loader {
    required property bool shown

    Layout.fillWidth: true
    active: shown
    visible: shown
}
