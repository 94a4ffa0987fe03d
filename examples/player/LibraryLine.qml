import QtQuick
import voro.application

/** A folder, a medium or a playlist of the library. */
Line {
    id: line

    required property int index
    required property url url
    required property string kind
    required property string artist
    required property double duration
    required property double size
    required cover
    readonly property bool isMedium: kind === "note" || kind === "film"

    signal added
    signal removed

    function describe(): string {
        if (kind === "folder")
            return "";
        if (kind === "playlist")
            return qsTr("Playlist");
        if (duration > 0)
            return artist === "" ? Format.time(duration) : artist + " · " + Format.time(duration);
        return String(url).split(".").pop().toUpperCase() + " · " + Format.size(size);
    }

    subtitle: describe()
    symbol: kind

    IconButton {
        visible: line.kind === "playlist"
        symbol: "delete"
        text: qsTr("Delete “%1”").arg(line.title)
        focusPolicy: Qt.NoFocus
        onClicked: line.removed()
    }
    IconButton {
        visible: line.isMedium
        symbol: "add"
        text: qsTr("Add “%1”").arg(line.title)
        focusPolicy: Qt.NoFocus
        onClicked: line.added()
    }
}
