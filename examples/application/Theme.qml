pragma Singleton
import QtQuick

/** The colours and sizes of all applications. */
QtObject {
    id: theme

    /** "dark", "light", or empty to follow the system's palette. */
    property string colours: ""
    /** Black and white, with borders. */
    property bool highContrast: false
    /** The size of texts as the user chose it, a factor of the system's. */
    property real scale: 1
    /** A film fills the screen, and nothing beside it should shine. */
    property bool isCinema: false

    readonly property bool isDark: isCinema || (colours === "" ? system.window.hslLightness < 0.5 : colours === "dark")

    readonly property color background: pick("#101418", "#f5f7f9", "#000000", "#ffffff")
    readonly property color surface: pick("#1a2027", "#ffffff", "#000000", "#ffffff")
    readonly property color raised: pick("#28313b", "#e4e9ee", "#303030", "#d8d8d8")
    readonly property color text: pick("#eef2f6", "#14191e", "#ffffff", "#000000")
    readonly property color faint: pick("#9dabb8", "#55626e", "#ffffff", "#000000")
    readonly property color accent: pick("#4cc9b0", "#0a7563", "#ffe14d", "#00332b")
    readonly property color accentText: pick("#06211b", "#ffffff", "#000000", "#ffffff")
    readonly property color warning: pick("#ff8a80", "#b3261e", "#ffb3ad", "#8a0000")
    readonly property int borderWidth: highContrast ? 1 : 0

    readonly property real systemScale: Math.min(2, Math.max(1, Application.font.pixelSize / 16))
    readonly property int fontSize: Math.round(15 * scale * systemScale)
    readonly property int smallSize: Math.round(fontSize * 0.85)
    readonly property int titleSize: Math.round(fontSize * 1.33)
    /** Texts take so much room that lines have to be broken which else are cut. */
    readonly property bool isLarge: fontSize >= 22
    readonly property int iconSize: Math.round(24 * Math.min(1.4, fontSize / 15))
    readonly property int touch: 48
    readonly property int margin: 16
    readonly property int radius: 12

    function pick(dark: color, light: color, darkContrast: color, lightContrast: color): color {
        return highContrast ? (isDark ? darkContrast : lightContrast) : (isDark ? dark : light);
    }

    /** An icon's place by its name. */
    function icon(name: string): url {
        return name === "" ? "" : "qrc:/voro/application/icons/" + name + ".svg";
    }

    readonly property SystemPalette system: SystemPalette { }
}
