import QtQuick

// The person proves their presence here. Every text that comes from outside is plain text.
Window {
    id: window

    required property QtObject prompt
    readonly property bool dark: system.window.hslLightness < 0.5
    readonly property var colors: dark ? darkColors : lightColors

    // The window's own colours.
    readonly property var lightColors: ({
        ground: "#f3f4f7", raised: "#ffffff", line: "#c3cad5", text: "#181c24", quiet: "#566071",
        accent: "#2a5bd0", accentPressed: "#1c429d", onAccent: "#ffffff", focus: "#2a5bd0",
        error: "#a3331f"
    })
    readonly property var darkColors: ({
        ground: "#14171c", raised: "#1c2027", line: "#454d5a", text: "#eceef1", quiet: "#aab2be",
        accent: "#8ab0ff", accentPressed: "#7099f0", onAccent: "#0d1526", focus: "#8ab0ff",
        error: "#f0957f"
    })

    width: 440
    // No limits of its own: a window manager would hold a height that grows against the old ones.
    height: content.implicitHeight + 48
    minimumWidth: width
    maximumWidth: width
    flags: Qt.Dialog | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    modality: Qt.ApplicationModal
    title: "Confirm your presence"
    color: colors.ground

    onClosing: prompt.cancel()

    SystemPalette {
        id: system
    }

    // Escape works wherever the focus is.
    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onEscapePressed: window.prompt.cancel()

        Column {
            id: content
            x: 24
            y: 24
            width: parent.width - 48
            spacing: 16

            Column {
                width: parent.width
                spacing: 6

                Text {
                    width: parent.width
                    text: window.prompt.refused ? "Presence was not confirmed" : "Confirm your presence"
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    font.pixelSize: 18
                    font.weight: Font.DemiBold
                    color: window.colors.text
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                Text {
                    objectName: "account"
                    width: parent.width
                    text: "Account " + window.prompt.account
                    textFormat: Text.PlainText
                    elide: Text.ElideRight
                    font.pixelSize: 13
                    color: window.colors.quiet
                }
            }

            Rectangle {
                width: parent.width
                height: reason.implicitHeight + 24
                radius: 8
                color: window.colors.raised
                border.width: 1
                border.color: window.colors.line

                Text {
                    id: reason
                    objectName: "reason"
                    x: 12
                    y: 12
                    width: parent.width - 24
                    text: window.prompt.reason
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    maximumLineCount: 8
                    elide: Text.ElideRight
                    font.pixelSize: 15
                    lineHeight: 1.15
                    color: window.colors.text
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }

            Text {
                objectName: "information"
                width: parent.width
                visible: text !== "" && !window.prompt.refused
                text: window.prompt.information
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                maximumLineCount: 6
                elide: Text.ElideRight
                font.pixelSize: 14
                color: window.colors.text
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Row {
                width: parent.width
                visible: window.prompt.errors !== ""
                spacing: 8

                Text {
                    id: mark
                    text: "⚠"
                    font.pixelSize: 14
                    color: window.colors.error
                }
                Text {
                    objectName: "errors"
                    width: parent.width - mark.width - 8
                    text: window.prompt.errors
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    maximumLineCount: 6
                    elide: Text.ElideRight
                    font.pixelSize: 14
                    color: window.colors.error
                    Accessible.role: Accessible.AlertMessage
                    Accessible.name: text
                }
            }

            Column {
                width: parent.width
                spacing: 6
                visible: !window.prompt.refused

                Text {
                    objectName: "question"
                    width: parent.width
                    text: window.prompt.asking ? window.prompt.question
                                               : "Waiting for the system’s check…"
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    font.pixelSize: 13
                    color: window.colors.quiet
                }
                Rectangle {
                    width: parent.width
                    height: input.implicitHeight + 18
                    radius: 8
                    color: window.colors.raised
                    opacity: input.enabled ? 1 : 0.45
                    border.width: input.activeFocus ? 2 : 1
                    border.color: input.activeFocus ? window.colors.focus : window.colors.line

                    TextInput {
                        id: input
                        objectName: "input"
                        anchors.fill: parent
                        anchors.leftMargin: 12
                        anchors.rightMargin: 12
                        verticalAlignment: TextInput.AlignVCenter
                        enabled: window.prompt.asking
                        focus: true
                        clip: true
                        activeFocusOnTab: true
                        passwordCharacter: "•"
                        echoMode: window.prompt.echo ? TextInput.Normal : TextInput.Password
                        inputMethodHints: window.prompt.echo
                            ? Qt.ImhNoPredictiveText
                            : Qt.ImhHiddenText | Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
                        maximumLength: 500
                        font.pixelSize: 15
                        color: window.colors.text
                        selectionColor: window.colors.accent
                        selectedTextColor: window.colors.onAccent
                        selectByMouse: true
                        Accessible.role: Accessible.EditableText
                        Accessible.passwordEdit: !window.prompt.echo
                        Accessible.name: window.prompt.question
                        onAccepted: window.prompt.submit(input)
                        onEnabledChanged: if (enabled) forceActiveFocus()
                    }
                }
            }

            Row {
                anchors.right: parent.right
                spacing: 10

                PresenceButton {
                    objectName: "cancel"
                    colors: window.colors
                    text: window.prompt.refused ? "Close" : "Cancel"
                    onClicked: window.prompt.cancel()
                }
                PresenceButton {
                    objectName: "confirm"
                    visible: !window.prompt.refused
                    enabled: window.prompt.asking
                    colors: window.colors
                    primary: true
                    text: "Confirm"
                    onClicked: window.prompt.submit(input)
                }
            }
        }
    }
}
