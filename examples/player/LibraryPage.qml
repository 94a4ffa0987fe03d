pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Qt.labs.folderlistmodel
import voro.application

/** A folder: its folders, its media, its playlists. */
FocusScope {
    id: page

    required property Playback player
    property url folder: Files.music

    readonly property var films: ["mp4", "m4v", "mkv", "webm", "avi", "mov", "ogv", "mpg", "ts"]
    readonly property var sounds: ["ogg", "oga", "opus", "mp3", "flac", "wav", "m4a", "aac", "mka", "amr", "wma"]
    readonly property var lists: ["m3u", "m3u8", "pls"]

    readonly property url parentFolder: Files.folderOf(folder)
    readonly property bool hasParent: String(parentFolder) !== String(folder)

    /** Goes to the folder above; false where there is none. */
    function goUp(): bool {
        if (!hasParent)
            return false;
        folder = parentFolder;
        return true;
    }

    function kindOf(suffix: var): string {
        const lower = suffix.toLowerCase();
        return films.includes(lower) ? "film" : lists.includes(lower) ? "playlist" : "note";
    }

    /** The folder's media from top to bottom. */
    function media(): var {
        const urls = [];
        for (let i = 0; i < model.count; ++i)
            if (!model.isFolder(i) && kindOf(model.get(i, "fileSuffix")) !== "playlist")
                urls.push(model.get(i, "fileUrl"));
        return urls;
    }

    function activate(url: url, isFolder: bool, kind: string) {
        if (isFolder) {
            folder = url;
        } else if (kind === "playlist") {
            player.openPlaylist(url);
        } else {
            const urls = media();
            player.open(urls, urls.findIndex(other => String(other) === String(url)));
        }
    }

    FolderListModel {
        id: model
        folder: page.folder
        showDirsFirst: true
        caseSensitive: false
        nameFilters: [...page.films, ...page.sounds, ...page.lists].map(suffix => "*." + suffix)
        sortCaseSensitive: false
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.margins: 4
            spacing: 4
            IconButton {
                symbol: "up"
                text: qsTr("Folder above")
                enabled: page.hasParent
                onClicked: page.goUp()
            }
            Label {
                Layout.fillWidth: true
                text: Files.titleOf(page.folder)
                textFormat: Text.PlainText
                elide: Text.ElideMiddle
                font { pixelSize: 20; bold: true }
                Accessible.role: Accessible.Heading
            }
            IconButton {
                symbol: "play"
                text: qsTr("Play all")
                visible: list.count > 0
                onClicked: {
                    const urls = page.media();
                    if (urls.length > 0)
                        page.player.open(urls, 0);
                }
            }
        }

        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            focus: true
            clip: true
            model: model
            reuseItems: true
            ScrollBar.vertical: ScrollBar { }
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Library")
            delegate: Line {
                id: line
                required property int index
                required property string fileName
                required property url fileUrl
                required property bool fileIsDir
                required property double fileSize
                required property string fileSuffix
                readonly property string kind: fileIsDir ? "folder" : page.kindOf(fileSuffix)

                title: fileIsDir ? fileName : Files.nameOf(fileUrl)
                subtitle: kind === "folder" ? "" : kind === "playlist" ? qsTr("Playlist")
                                                                  : fileSuffix.toUpperCase() + " · " + Format.size(fileSize)
                symbol: kind
                isCurrent: page.player.isLoaded && (String(page.player.current) === String(fileUrl)
                                                    || String(page.player.sourceUrl) === String(fileUrl))
                highlighted: ListView.isCurrentItem
                function open() {
                    list.currentIndex = index;
                    page.activate(fileUrl, fileIsDir, kind);
                }

                onClicked: open()
                Keys.onReturnPressed: open()
                // As everywhere else, as long as there is something to play and to pause.
                Keys.onSpacePressed: page.player.isLoaded ? page.player.toggle() : open()
                IconButton {
                    visible: line.kind === "playlist"
                    symbol: "delete"
                    text: qsTr("Delete “%1”").arg(line.title)
                    focusPolicy: Qt.NoFocus
                    onClicked: removing.ask(line.fileUrl)
                }
                IconButton {
                    visible: line.kind === "note" || line.kind === "film"
                    symbol: "add"
                    text: qsTr("Add “%1” to a playlist").arg(line.title)
                    focusPolicy: Qt.NoFocus
                    onClicked: {
                        playlists.medium = line.fileUrl;
                        playlists.open();
                    }
                }
            }
            EmptyState {
                anchors.centerIn: parent
                width: parent.width - 64
                visible: model.status === FolderListModel.Ready && model.count === 0
                symbol: "folder"
                title: qsTr("Nothing to play here")
                text: qsTr("Music, films and playlists in this folder show up as soon as they are there.")
            }
        }
    }

    ConfirmSheet {
        id: removing
        title: qsTr("Delete the playlist?")
        onConfirmed: (file) => page.player.problem = Files.remove(file)
    }
    PlaylistSheet {
        id: playlists
        onFailed: (problem) => page.player.problem = problem
    }
}
