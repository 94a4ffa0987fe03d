import QtQuick
import QtQuick.Controls

/** The window of an application: a phone's size at first, its colours from the theme. */
ApplicationWindow {
    id: window

    /** As the command line wants them, see Theme. */
    property string colours: ""
    /** Wide enough for two columns. */
    readonly property bool isWide: width >= 720

    width: 360
    height: 640
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    color: Theme.background
    font.pixelSize: Theme.fontSize

    palette {
        window: Theme.background
        windowText: Theme.text
        base: Theme.surface
        text: Theme.text
        button: Theme.raised
        buttonText: Theme.text
        brightText: Theme.accentText
        highlight: Theme.accent
        highlightedText: Theme.accentText
        placeholderText: Theme.faint
        toolTipBase: Theme.raised
        toolTipText: Theme.text
        light: Theme.raised
        midlight: Theme.raised
        mid: Theme.faint
        dark: Theme.text
    }

    Binding {
        target: Theme
        property: "colours"
        value: window.colours
    }
}
