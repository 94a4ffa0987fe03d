pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Dialogs
import voro.application

/** Asks for files or an address to play. */
Item {
    id: opening

    signal chosen(urls: var)

    visible: false

    function askForFiles() {
        files.active = true;
        (files.item as FileDialog).open();
    }
    function askForAddress() {
        address.open();
    }

    Loader {
        id: files
        active: false
        sourceComponent: FileDialog {
            id: dialog
            title: qsTr("Open files")
            currentFolder: Files.music
            fileMode: FileDialog.OpenFiles
            onAccepted: opening.chosen(dialog.selectedFiles)
        }
    }
    NameDialog {
        id: address
        title: qsTr("Open an address")
        action: qsTr("Play")
        onNamed: (name) => {
            const url = Files.addressOf(name);
            if (String(url) === "")
                problem = qsTr("This is no address. One begins with http:// or https://, for example.");
            else
                opening.chosen([url]);
        }
    }
}
