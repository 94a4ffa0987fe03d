pragma Singleton
import QtQuick

/** The colours and sizes of all applications. */
QtObject {
    id: theme

    /** "dark", "light", or empty to follow the system's palette. */
    property string colours: ""
    readonly property bool isDark: colours === "" ? system.window.hslLightness < 0.5 : colours === "dark"

    readonly property color background: isDark ? "#101418" : "#f5f7f9"
    readonly property color surface: isDark ? "#1a2027" : "#ffffff"
    readonly property color raised: isDark ? "#28313b" : "#e4e9ee"
    readonly property color text: isDark ? "#eef2f6" : "#14191e"
    readonly property color faint: isDark ? "#9dabb8" : "#55626e"
    readonly property color accent: isDark ? "#4cc9b0" : "#0a7563"
    readonly property color accentText: isDark ? "#06211b" : "#ffffff"
    readonly property color warning: isDark ? "#ff8a80" : "#b3261e"

    readonly property int fontSize: 15
    readonly property int touch: 48
    readonly property int margin: 16
    readonly property int radius: 12

    /** An icon's place by its name. */
    function icon(name: string): url {
        return name === "" ? "" : "qrc:/voro/application/icons/" + name + ".svg";
    }

    readonly property SystemPalette system: SystemPalette { }
}
