import QtQuick
import QtQuick.Controls
import voro.application

/** The window of an application: a phone's size at first, then as it was left; its colours from the theme. */
ApplicationWindow {
    id: window

    /** As the command line wants them, see Theme; they hold for this time only. */
    property string colours: ""
    /** The keys of the application: objects with a `key` and a `text`. */
    property var keys: []
    /** Wide enough for two columns. */
    readonly property bool isWide: width >= 720

    /** Another start of the program, or the desktop, wants these URLs opened. */
    signal received(urls: var)

    // Read at once: pages that are arranged for another width first keep places for what they no longer show.
    width: settings.value("width", 360)
    height: settings.value("height", 640)
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    color: Theme.background
    font.pixelSize: Theme.fontSize

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

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

    onWidthChanged: keepSize()
    onHeightChanged: keepSize()
    function keepSize() {
        if (visible && visibility === Window.Windowed) {
            settings.setValue("width", width);
            settings.setValue("height", height);
        }
    }

    /** What is the same in every application; true when the key was one of these. */
    function handleCommonKey(event: var): bool {
        if (event.modifiers & Qt.ControlModifier) {
            if (event.key === Qt.Key_Q)
                close();
            return event.key === Qt.Key_Q;
        }
        if (event.key === Qt.Key_F1 || event.key === Qt.Key_Question)
            keySheet.open();
        return event.key === Qt.Key_F1 || event.key === Qt.Key_Question;
    }
    function showKeys() {
        keySheet.open();
    }
    function showAppearance() {
        appearance.open();
    }
    function showAbout() {
        about.open();
    }

    Settings {
        id: settings
        category: "window"
        property string colours: ""
        property bool highContrast: false
        property real scale: 1
    }
    Binding {
        target: Theme
        property: "colours"
        value: window.colours || settings.colours
    }
    Binding {
        target: Theme
        property: "highContrast"
        value: settings.highContrast
    }
    Binding {
        target: Theme
        property: "scale"
        value: settings.scale
    }
    LazySheet {
        id: keySheet
        sheet: Qt.resolvedUrl("KeySheet.qml")
        properties: ({ keys: window.keys })
    }
    LazySheet {
        id: appearance
        sheet: Qt.resolvedUrl("AppearanceSheet.qml")
        properties: ({ settings: settings })
    }
    LazySheet {
        id: about
        sheet: Qt.resolvedUrl("AboutSheet.qml")
    }
}
