import QtQuick
import Qt.labs.settings
import voro.application

/** The library beside what is played, or one of the two where the window is narrow. */
AppWindow {
    id: window

    /** What to play at the start: files and addresses in their order, or a folder to show. */
    property var operands: []
    /** Of a narrow window: what is played rather than the library. */
    property bool showsPlayer: false
    property bool isReady: false

    visibility: page.isFilling ? Window.FullScreen : Window.AutomaticVisibility
    title: player.isPlaying ? player.title : qsTr("Voro Player")
    Component.onCompleted: {
        const folder = operands.find(url => Files.isFolder(url));
        const media = operands.filter(url => !Files.isFolder(url));
        if (folder !== undefined)
            library.folder = folder;
        if (media.length > 0) {
            player.open(media, 0);
            showsPlayer = true;
        }
        isReady = true;
        library.need();
        keys.forceActiveFocus();
    }

    Settings {
        property alias volume: player.volume
        property alias equalizer: player.equalizerPreset
    }

    Playback {
        id: player
        windowId: page.windowId
    }

    FocusScope {
        id: keys
        anchors.fill: parent
        focus: true
        Keys.onPressed: (event) => event.accepted = window.handleKey(event.key)

        Loader {
            id: library
            property url folder: Files.music
            readonly property LibraryPage page: item as LibraryPage
            visible: window.isWide || !window.showsPlayer
            // What is played first need not wait for what is not seen.
            function need() {
                if (window.isReady && visible && !item)
                    setSource("LibraryPage.qml", { player: player, folder: folder, focus: true });
            }
            onVisibleChanged: need()
            enabled: visible
            x: 0
            width: window.isWide ? Math.max(320, Math.round(parent.width * 0.4)) : parent.width
            anchors { top: parent.top; bottom: bar.visible ? bar.top : parent.bottom }
            focus: visible
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
            canGoBack: !window.isWide
            onBack: window.showsPlayer = false
        }
        Notice {
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
            text: player.problem
            onClosed: player.problem = ""
        }
    }

    function handleKey(key: int): bool {
        page.wake();
        switch (key) {
        case Qt.Key_Space: player.toggle(); return true;
        case Qt.Key_Left: player.seekBy(-10000); return true;
        case Qt.Key_Right: player.seekBy(10000); return true;
        case Qt.Key_N: player.goToNext(); return true;
        case Qt.Key_P: player.goToPrevious(); return true;
        case Qt.Key_Plus: player.volume = Math.min(1, player.volume + 0.05); return true;
        case Qt.Key_Minus: player.volume = Math.max(0, player.volume - 0.05); return true;
        case Qt.Key_R: player.goOnRepeating(); return true;
        case Qt.Key_S: player.setShuffles(!player.shuffles); return true;
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
