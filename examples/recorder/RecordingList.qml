pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Qt.labs.folderlistmodel
import voro.application
import voro.multimedia

/** The recordings, the newest first; each can be played, renamed and deleted. */
FocusScope {
    id: page

    required property AppWindow window
    property bool isRecording: false
    /** The file that is still being written, which is not to be touched. */
    property url unfinished

    signal failed(problem: string)
    signal recordWanted

    function check(result: int) {
        if (result !== MediaError.None)
            failed(MediaErrors.text(result));
    }

    /** Shows the recordings where they can be sent and copied. */
    function showFolder() {
        if (!Qt.openUrlExternally(Files.recordings))
            failed(qsTr("There is no program that shows folders. The recordings are in %1.").arg(Files.pathOf(Files.recordings)));
    }

    function stop() {
        player.reset();
    }

    function toggle(file: url) {
        if (String(player.sourceUrl) === String(file) && player.mediaState === MediaState.Started) {
            check(player.pause());
            return;
        }
        if (String(player.sourceUrl) !== String(file))
            player.sourceUrl = file;
        check(player.play());
    }

    MediaPlayer {
        id: player
        statusInterval: 200
        onError: (mediaError) => page.check(mediaError)
        onPlaybackCompleted: reset()
    }
    FolderListModel {
        id: model
        folder: Files.recordings
        showDirs: false
        sortField: FolderListModel.Time
        nameFilters: ["*.ogg", "*.opus", "*.mp3", "*.flac", "*.wav", "*.m4a", "*.amr"]
        /** The line of the recording that was deleted, where the keys go on; -1 when none was. */
        property int line: -1
        onCountChanged: {
            if (line >= 0 && count > 0)
                list.currentIndex = Math.min(line, count - 1);
            line = -1;
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0
        RowLayout {
            Layout.margins: 4
            Layout.leftMargin: Theme.margin
            spacing: 0
            Label {
                Layout.fillWidth: true
                text: qsTr("Recordings")
                elide: Text.ElideRight
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Theme.fontSize
                font { pixelSize: Theme.titleSize; bold: true }
                Accessible.role: Accessible.Heading
            }
            IconButton {
                symbol: "folder"
                text: qsTr("Show the folder")
                onClicked: page.showFolder()
            }
            AppMenu {
                window: page.window
            }
        }
        LineList {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            focus: true
            enabled: !page.isRecording
            opacity: enabled ? 1 : 0.5
            model: model
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Recordings")
            delegate: RecordingLine {
                readonly property bool isLoaded: player.mediaState !== MediaState.Unprepared
                                                 && String(player.sourceUrl) === String(fileUrl)
                isUnfinished: String(fileUrl) === String(page.unfinished)
                highlighted: ListView.isCurrentItem
                isPlaying: isLoaded && player.mediaState === MediaState.Started
                position: isLoaded ? Format.time(player.position) + " / " + Format.time(player.duration) : ""
                onPlayed: {
                    list.currentIndex = index;
                    page.toggle(fileUrl);
                }
                onRenamed: {
                    renaming.file = fileUrl;
                    renaming.name = title;
                    renaming.open();
                }
                onRecordWanted: page.recordWanted()
                onRemoved: removing.ask(fileUrl)
            }
            EmptyState {
                anchors.centerIn: parent
                width: parent.width - 64
                visible: model.status === FolderListModel.Ready && model.count === 0
                symbol: "microphone"
                title: qsTr("No recordings yet")
                text: qsTr("The red button starts the first one.")
            }
        }
    }

    /** Lets go of a file that is about to change. */
    function release(file: url) {
        if (String(player.sourceUrl) === String(file))
            player.sourceUrl = "";
    }

    NameDialog {
        id: renaming
        property url file
        title: qsTr("Rename the recording")
        action: qsTr("Rename")
        onNamed: (name) => {
            page.release(file);
            problem = Files.rename(file, name);
        }
    }
    ConfirmSheet {
        id: removing
        title: qsTr("Delete the recording?")
        onConfirmed: (file) => {
            page.release(file);
            model.line = list.currentIndex;
            const problem = Files.remove(file);
            if (problem !== "")
                page.failed(problem);
        }
    }
}
