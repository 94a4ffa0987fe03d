import QtQuick
import Qt.labs.folderlistmodel
import voro.application

/** Chooses where a medium is added: the queue, a playlist, or a new one. */
ChoiceSheet {
    id: sheet

    required property Playback player
    property url medium

    title: qsTr("Add")
    choices: [
        { text: qsTr("Play next"), value: 1, symbol: "queue" },
        { text: qsTr("Play at the end of the queue"), value: 2, symbol: "queue" },
        { text: qsTr("New playlist…"), value: 3, symbol: "add" },
        ...names.map(name => ({ text: name, value: name, symbol: "playlist" })),
    ]
    onChosen: (value) => {
        if (value === 3)
            dialog.open();
        else if (typeof value === "number")
            player.add([medium], value === 1);
        else
            player.problem = Files.addToPlaylist(value, medium);
    }

    readonly property var names: {
        const all = [];
        for (let i = 0; i < files.count; ++i)
            all.push(Files.nameOf(files.get(i, "fileUrl")));
        return all;
    }

    FolderListModel {
        id: files
        folder: Files.music
        nameFilters: ["*.m3u8"]
        showDirs: false
    }
    NameDialog {
        id: dialog
        title: qsTr("New playlist")
        action: qsTr("Add")
        name: qsTr("My playlist")
        onNamed: (name) => problem = Files.addToPlaylist(name, sheet.medium)
    }
}
