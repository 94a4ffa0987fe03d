import QtQuick

/** A button with the menu of an application: what it adds, then what all of them have. */
IconButton {
    id: button

    required property AppWindow window
    /** What the application adds: objects with a `text`, a `symbol` and a function `run`. */
    property var entries: []

    symbol: "more"
    text: qsTr("More")
    onClicked: menu.open()

    readonly property var common: [
        { text: qsTr("Appearance"), symbol: "appearance", run: () => window.showAppearance() },
        { text: qsTr("Keys"), symbol: "keyboard", run: () => window.showKeys() },
        { text: qsTr("About"), symbol: "about", run: () => window.showAbout() },
    ]

    ChoiceSheet {
        id: menu
        title: Application.displayName
        choices: [...button.entries, ...button.common].map((entry, index) => (
                 { text: entry.text, symbol: entry.symbol, value: index }))
        onChosen: (index) => [...button.entries, ...button.common][index].run()
    }
}
