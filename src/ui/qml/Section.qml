import QtQuick
import Kelvo

// A section that exists only while its condition holds.
Repeater {
    required property bool shown

    model: shown ? 1 : 0
}
