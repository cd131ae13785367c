import QtQuick
import QtQuick.Dialogs

// The chooser of one existing file.
FileDialog {
    fileMode: FileDialog.OpenFile
    modality: Qt.ApplicationModal
}
