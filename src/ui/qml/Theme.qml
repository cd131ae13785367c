pragma Singleton
import QtQuick
import Kelvo

// The design tokens: every size, colour and duration of the window comes from here.
QtObject {
    id: theme

    // Set by the window from the desktop's preference.
    property bool dark: false

    // --- Type: steps of the system's own text size, so that its text scale carries through -------
    readonly property Text probe: Text {
        font: Application.font
    }
    readonly property real body: Math.max(9, probe.fontInfo.pixelSize)
    readonly property real small: Math.round(body * 0.88)
    readonly property real tiny: Math.round(body * 0.8)
    readonly property real heading: Math.round(body * 1.12)
    readonly property real headline: Math.round(body * 1.38)
    readonly property real title: Math.round(body * 1.3)
    readonly property real figure: Math.round(body * 2)
    readonly property string fixedFamily: "monospace"

    // Lengths given for text of 13 pixels, at the scale of the system's text.
    readonly property real scale: body / 13
    function length(points: real): real {
        return Math.round(points * scale);
    }

    // --- Spacing and shape -----------------------------------------------------------------------
    readonly property real xs: length(4)
    readonly property real s: length(8)
    readonly property real m: length(12)
    readonly property real l: length(16)
    readonly property real xl: length(24)
    readonly property real radius: length(12)
    readonly property real controlRadius: length(8)
    readonly property real controlHeight: length(32)
    readonly property real icon: length(18)
    readonly property real hairline: 1
    readonly property real focusWidth: 2

    // Beside the one column of a pane.
    function margin(paneWidth: real): real {
        return paneWidth < length(620) ? m : l;
    }

    // --- Motion ----------------------------------------------------------------------------------
    readonly property int quick: 120
    readonly property int calm: 650

    // --- Colour: text on its surface keeps a contrast of at least 4.5 to 1 -----------------------
    readonly property color window: dark ? "#14171c" : "#f3f4f7"
    readonly property color pane: dark ? "#101318" : "#e9ecf1"
    readonly property color card: dark ? "#1c2027" : "#ffffff"
    readonly property color well: dark ? "#14171c" : "#f5f6f9"
    readonly property color line: dark ? "#2d333d" : "#dfe3ea"
    readonly property color controlLine: dark ? "#454d5a" : "#c3cad5"
    readonly property color text: dark ? "#eceef1" : "#181c24"
    readonly property color secondary: dark ? "#aab2be" : "#566071"
    readonly property color tertiary: dark ? "#909aa8" : "#657082"
    readonly property color accent: dark ? "#8ab0ff" : "#2a5bd0"
    readonly property color accentHover: dark ? "#a2c0ff" : "#2350bb"
    readonly property color accentPressed: dark ? "#7099f0" : "#1c429d"
    readonly property color accentText: dark ? "#0d1526" : "#ffffff"
    readonly property color accentSoft: dark ? "#1d2a45" : "#e9effc"
    readonly property color accentSoftHover: dark ? "#253558" : "#dbe5fa"
    readonly property color accentLine: dark ? "#36508a" : "#b7caf3"
    readonly property color hover: dark ? "#262b34" : "#f0f2f6"
    readonly property color track: dark ? "#303742" : "#e3e7ee"
    readonly property color disabledText: dark ? "#69727f" : "#98a1ae"
    readonly property color met: dark ? "#5fc893" : "#1b7a4b"
    readonly property color open: dark ? "#f0a552" : "#b2540a"
    // Lines in one plot; neighbours differ in hue.
    readonly property list<color> series: dark ? ["#5fc893", "#b89cff", "#f2c14e", "#6cc5e8", "#f28aa5", "#c3d36b"] : ["#1b7a4b", "#6a3fc4", "#8a6a00", "#0f6f93", "#b0305c", "#5d6b12"]
    readonly property color warningSoft: dark ? "#33271a" : "#fdf3e6"
    readonly property color warningLine: dark ? "#6b4d25" : "#efcfa4"
}
