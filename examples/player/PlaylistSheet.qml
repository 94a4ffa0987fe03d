import QtQuick
import Qt.labs.folderlistmodel
import voro.application

/** Chooses the playlist to which a medium is added, or makes a new one. */
ChoiceSheet {
    id: sheet

    property url medium

    signal failed(problem: string)

    title: qsTr("Add to playlist")
    choices: [{ text: qsTr("New playlist…"), value: "", symbol: "add" }, ...names.map(name => (
              { text: name, value: name, symbol: "playlist" }))]
    current: null
    onChosen: (name) => {
        if (name === "")
            dialog.open();
        else
            add(name);
    }

    readonly property var names: {
        const all = [];
        for (let i = 0; i < files.count; ++i)
            all.push(Files.nameOf(files.get(i, "fileUrl")));
        return all;
    }

    function add(name: string) {
        const problem = Files.addToPlaylist(name, medium);
        if (problem !== "")
            failed(problem);
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
        onNamed: (name) => sheet.add(name)
    }
}
