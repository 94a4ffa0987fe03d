import QtQuick
import voro.application

/** The library beside what is played, or one of the two where the window is narrow. */
AppWindow {
    id: window

    /** What to play at the start: files and addresses in their order, or a folder to show. */
    property var operands: []
    /** Of a narrow window: what is played rather than the library. */
    property bool showsPlayer: false
    property url folder: Files.music
    property bool isReady: false

    visibility: page.isFilling ? Window.FullScreen : Window.AutomaticVisibility
    title: player.isPlaying ? player.title : qsTr("Voro Player")
    Component.onCompleted: {
        if (Files.isFolder(settings.folder))
            folder = settings.folder;
        openAll(operands);
        settings.folder = folder;
        isReady = true;
        library.need();
        keyboard.forceActiveFocus();
    }
    onReceived: (urls) => openAll(urls)
    onFolderChanged: if (isReady) settings.folder = folder

    keys: [
        { key: qsTr("Space"), text: qsTr("Play or pause") },
        { key: "← →", text: qsTr("10 seconds back or on") },
        { key: "↑ ↓", text: qsTr("Louder or softer, beside the library") },
        { key: "+ −", text: qsTr("Louder or softer") },
        { key: "M", text: qsTr("Sound off or on") },
        { key: "N P", text: qsTr("Next or previous track") },
        { key: "[ ]", text: qsTr("Slower or faster") },
        { key: "Q", text: qsTr("Queue") },
        { key: "R", text: qsTr("Repeat") },
        { key: "S", text: qsTr("Mix the order") },
        { key: "C", text: qsTr("Captions on or off") },
        { key: "F", text: qsTr("Full screen") },
        { key: "G", text: qsTr("Go on where it stopped last time") },
        { key: "Ctrl+O", text: qsTr("Open files") },
        { key: "Ctrl+L", text: qsTr("Open an address") },
        { key: "Ctrl+F", text: qsTr("Search") },
        { key: qsTr("Escape"), text: qsTr("Back, or to the folder above") },
    ]

    /** Plays files and addresses, and what is in the folders among them; of folders alone the first is shown. */
    function openAll(urls: var) {
        const folders = urls.filter(url => Files.isFolder(url));
        if (folders.length > 0) {
            window.folder = folders[0];
            showsPlayer = false;
        }
        if (folders.length < urls.length)
            play(urls);
    }
    /** Plays files, addresses and what is in folders. */
    function play(urls: var) {
        const media = [...Files.mediaOf(urls)];
        if (media.length === 0) {
            player.problem = qsTr("There is nothing in it that can be played.");
            return;
        }
        player.open(media, 0);
        showsPlayer = true;
    }
    /** What is dragged over the window; a text may be an address. */
    function urlsOf(drag: DragEvent): var {
        const address = Files.addressOf(drag.text);
        return drag.hasUrls ? drag.urls : String(address) !== "" ? [address] : [];
    }

    Settings {
        id: settings
        property url folder
        property alias volume: player.loudness
        property alias equalizer: player.equalizerPreset
    }
    Binding {
        target: Theme
        property: "isCinema"
        value: page.isFilling
    }

    Playback {
        id: player
        windowId: page.windowId
        onLibraryWanted: library.make()
    }
    Role {
        player: player
    }
    Resume {
        id: resume
        player: player
    }
    SleepTimer {
        id: sleep
        player: player
    }
    Opening {
        id: opening
        onChosen: (urls) => window.play(urls)
    }

    FocusScope {
        id: keyboard
        anchors.fill: parent
        focus: true
        Keys.onPressed: (event) => event.accepted = window.handleKey(event)

        Loader {
            id: library
            readonly property LibraryPage page: item as LibraryPage
            visible: window.isWide || !window.showsPlayer
            // What is played first need not wait for what is not seen.
            function need() {
                if (window.isReady && visible)
                    make();
            }
            function make() {
                if (!item)
                    setSource("LibraryPage.qml", { player: player, resume: resume, opening: opening, menu: window.menu,
                                                   folder: window.folder, focus: true });
            }
            onVisibleChanged: need()
            enabled: visible
            width: window.isWide ? Math.max(320, Math.round(parent.width * 0.4)) : parent.width
            anchors { left: parent.left; top: parent.top; bottom: bar.visible ? bar.top : parent.bottom }
            focus: visible
        }
        Binding {
            target: library.page
            property: "folder"
            value: window.folder
        }
        Binding {
            target: library.page
            property: "isBeside"
            value: window.isWide
        }
        Connections {
            target: library.page
            function onFolderChanged() {
                window.folder = library.page.folder;
            }
        }
        MiniBar {
            id: bar
            visible: !window.isWide && !window.showsPlayer && player.isLoaded
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            player: player
            onOpened: window.showsPlayer = true
        }
        PlayerPage {
            id: page
            visible: window.isWide || window.showsPlayer
            enabled: visible
            anchors {
                left: window.isWide && !page.isFilling ? library.right : parent.left
                top: parent.top; right: parent.right; bottom: parent.bottom
            }
            player: player
            resume: resume
            opening: opening
            menu: window.menu
            canGoBack: !window.isWide
            onBack: window.showsPlayer = false
        }
        DropArea {
            anchors.fill: parent
            onEntered: (drag) => drag.accepted = window.urlsOf(drag).length > 0
            onDropped: (drop) => window.play(window.urlsOf(drop))
            Rectangle {
                anchors.fill: parent
                visible: parent.containsDrag // qmllint disable
                color: "transparent"
                border { width: 4; color: Theme.accent }
            }
        }
        Notice {
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
            text: player.problem
            onClosed: player.problem = ""
        }
    }

    /** What the menus of both pages have. */
    readonly property var menu: [
        { text: qsTr("Open files…"), symbol: "folder", run: () => opening.askForFiles() },
        { text: qsTr("Open an address…"), symbol: "link", run: () => opening.askForAddress() },
        { text: sleep.minutes === 0 ? qsTr("Sleep timer") : qsTr("Sleep timer: on"), symbol: "moon", run: () => sleepSheet.open() },
    ]
    LazySheet {
        id: sleepSheet
        sheet: Qt.resolvedUrl("SleepSheet.qml")
        properties: ({ timer: sleep })
    }

    function handleKey(event: var): bool {
        page.wake();
        if (handleCommonKey(event))
            return true;
        if (event.modifiers & Qt.ControlModifier) {
            switch (event.key) {
            case Qt.Key_O: opening.askForFiles(); return true;
            case Qt.Key_L: opening.askForAddress(); return true;
            case Qt.Key_F:
                showsPlayer = false;
                library.page.showSearch();
                return true;
            }
            return false;
        }
        switch (event.key) {
        case Qt.Key_Space: player.toggle(); return true;
        case Qt.Key_Left: player.seekBy(-10000); return true;
        case Qt.Key_Right: player.seekBy(10000); return true;
        case Qt.Key_N: player.goToNext(); return true;
        case Qt.Key_P: player.goToPrevious(); return true;
        case Qt.Key_Plus: player.changeVolume(0.05); return true;
        case Qt.Key_Minus: player.changeVolume(-0.05); return true;
        case Qt.Key_Up:
        case Qt.Key_Down:
            // At the ends of a list they mean the list, too.
            if (library.activeFocus)
                return false;
            player.changeVolume(event.key === Qt.Key_Up ? 0.05 : -0.05);
            return true;
        case Qt.Key_M: player.isMuted = !player.isMuted; return true;
        case Qt.Key_BracketLeft: player.chooseSpeed(Math.max(0.5, player.wantedSpeed - 0.25)); return true;
        case Qt.Key_BracketRight: player.chooseSpeed(Math.min(2, player.wantedSpeed + 0.25)); return true;
        case Qt.Key_Q: page.showQueue(); return true;
        case Qt.Key_R: player.goOnRepeating(); return true;
        case Qt.Key_S: player.setShuffles(!player.shuffles); return true;
        case Qt.Key_C: player.closedCaptionEnabled = !player.closedCaptionEnabled; return true;
        case Qt.Key_G: resume.accept(); return true;
        case Qt.Key_F:
        case Qt.Key_F11: page.isCinema = player.hasVideo && !page.isCinema; return true;
        case Qt.Key_Escape:
        case Qt.Key_Back:
            if (page.isFilling) {
                page.isCinema = false;
                return true;
            }
            if (window.isWide || !window.showsPlayer)
                return library.page?.goUp() ?? false;
            window.showsPlayer = false;
            return true;
        }
        return false;
    }
}
