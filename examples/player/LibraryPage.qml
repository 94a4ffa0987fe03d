pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application
import voro.player

/** A folder with its folders, media and playlists; or all media below it in another order, or those that are searched for. */
FocusScope {
    id: page

    required property Playback player
    required property Resume resume
    required property Opening opening
    property var menu: []
    /** What is played is seen beside the library. */
    property bool isBeside: false
    property url folder: Files.music

    readonly property url parentFolder: Files.folderOf(folder)
    readonly property bool hasParent: String(parentFolder) !== String(folder)
    readonly property bool isSearching: search.visible
    /** The folder's name has no room beside the buttons. */
    readonly property bool hasBroadName: width < Theme.titleSize * 16

    component FolderName: Label {
        Layout.fillWidth: true
        text: Files.titleOf(page.folder)
        horizontalAlignment: Text.AlignLeft
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
        font { pixelSize: Theme.titleSize; bold: true }
        Accessible.role: Accessible.Heading
    }

    /** Ends a search, or goes to the folder above; false where there is none. */
    function goUp(): bool {
        if (isSearching) {
            search.visible = false;
            search.text = "";
            list.forceActiveFocus(Qt.OtherFocusReason);
            return true;
        }
        if (!hasParent)
            return false;
        folder = parentFolder;
        return true;
    }

    function showSearch() {
        search.visible = true;
        search.forceActiveFocus(Qt.ShortcutFocusReason);
    }

    function activate(url: url, kind: string) {
        if (kind === "folder") {
            folder = url;
        } else if (kind === "playlist") {
            player.openPlaylist(url);
        } else {
            const urls = library.media();
            player.open(urls, urls.findIndex(other => String(other) === String(url)));
        }
    }

    Library {
        id: library
        folder: page.folder
        order: settings.order
        search: search.text.trim()
        onModelReset: list.currentIndex = Math.max(0, indexOf(page.player.current))
        Component.onCompleted: page.player.library = this
    }
    Settings {
        id: settings
        category: "library"
        property int order: Library.ByFolder
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.margins: 4
            spacing: 0
            IconButton {
                symbol: "up"
                text: qsTr("Folder above")
                enabled: page.hasParent
                onClicked: page.goUp()
            }
            FolderName {
                Layout.leftMargin: 4
                visible: !page.hasBroadName
            }
            Item {
                Layout.fillWidth: true
                visible: page.hasBroadName
            }
            IconButton {
                symbol: "play"
                text: qsTr("Play all")
                visible: list.count > 0
                onClicked: {
                    const urls = library.media();
                    if (urls.length > 0)
                        page.player.open(urls, 0);
                }
            }
            IconButton {
                symbol: "search"
                text: qsTr("Search")
                isOn: page.isSearching
                onClicked: page.isSearching ? page.goUp() : page.showSearch()
            }
            IconButton {
                symbol: "sort"
                text: qsTr("Order")
                isOn: settings.order !== Library.ByFolder
                onClicked: orders.open()
            }
            AppMenu {
                window: page.ApplicationWindow.window as AppWindow
                entries: page.menu
            }
        }
        FolderName {
            Layout.leftMargin: Theme.margin
            Layout.rightMargin: Theme.margin
            Layout.bottomMargin: 8
            visible: page.hasBroadName
        }
        TextField {
            id: search
            Layout.fillWidth: true
            Layout.leftMargin: Theme.margin
            Layout.rightMargin: Theme.margin
            Layout.bottomMargin: 8
            implicitHeight: Theme.touch
            visible: false
            color: Theme.text
            placeholderText: qsTr("Title, artist or album")
            Accessible.name: qsTr("Search")
            background: Rectangle {
                radius: height / 2
                color: Theme.surface
                border.width: search.activeFocus ? 2 : 1
                border.color: search.activeFocus ? Theme.accent : Theme.faint
            }
            leftPadding: 16
            rightPadding: 16
            Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
            Keys.onEscapePressed: page.goUp()
            onAccepted: list.forceActiveFocus(Qt.TabFocusReason)
        }

        LineList {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            focus: true
            model: library
            reuseItems: true
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Library")
            delegate: LibraryLine {
                id: line
                isCurrent: page.player.isLoaded && String(page.player.current) === String(url)
                highlighted: ListView.isCurrentItem
                function open() {
                    list.currentIndex = index;
                    page.activate(url, kind);
                }

                onClicked: open()
                Keys.onReturnPressed: open()
                Keys.onEnterPressed: open()
                // As everywhere else, as long as there is something to play and to pause.
                Keys.onSpacePressed: page.player.isLoaded ? page.player.toggle() : open()
                onRemoved: removing.ask(url)
                onAdded: {
                    adding.medium = url;
                    adding.open();
                }
            }
            StartPage {
                anchors.centerIn: parent
                width: parent.width - 64
                visible: library.isReady && list.count === 0 && !page.isSearching
                player: page.player
                resume: page.resume
                opening: page.opening
                title: qsTr("Nothing to play in this folder")
                offers: !page.isBeside || page.player.isLoaded
            }
            EmptyState {
                anchors.centerIn: parent
                width: parent.width - 64
                visible: library.isReady && list.count === 0 && page.isSearching
                symbol: "search"
                title: qsTr("Nothing found")
                text: qsTr("Names of files, titles, artists and albums are searched, in this folder and below it.")
            }
        }
    }

    ChoiceSheet {
        id: orders
        title: qsTr("Order")
        choices: [
            { text: qsTr("By folder"), value: Library.ByFolder },
            { text: qsTr("By title"), value: Library.ByTitle },
            { text: qsTr("By artist"), value: Library.ByArtist },
            { text: qsTr("By album"), value: Library.ByAlbum },
        ]
        current: settings.order
        onChosen: (order) => settings.order = order
    }
    ConfirmSheet {
        id: removing
        title: qsTr("Delete the playlist?")
        onConfirmed: (file) => page.player.problem = Files.remove(file)
    }
    AddSheet {
        id: adding
        player: page.player
    }
}
