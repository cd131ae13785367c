import QtQuick
import QtQuick.Layouts
import Kelvo

// Long work that is under way: what, and how far it has come.
RowLayout {
    id: work

    required property EngineView engine

    Layout.maximumWidth: Theme.length(260)
    spacing: Theme.s
    visible: engine.progressTitle !== ""

    Note {
        font.pixelSize: Theme.small
        text: work.engine.progressTitle
        wrapMode: Text.NoWrap
    }
    Meter {
        Accessible.name: work.engine.progressTitle
        Layout.fillWidth: false
        Layout.preferredWidth: Theme.length(80)
        value: work.engine.progressShare
    }
}
