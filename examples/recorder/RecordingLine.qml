import QtQuick
import voro.application

/** One recording; the one that plays shows where it is. */
Line {
    id: line

    required property int index
    required property url fileUrl
    required property date fileModified
    /** It is still being written, and not yet to be touched. */
    property bool isUnfinished: false
    property bool isPlaying: false
    property string position: ""

    signal played
    signal renamed
    signal removed
    signal recordWanted

    visible: !isUnfinished
    height: visible ? implicitHeight : 0
    title: Files.nameOf(fileUrl)
    // The end says when it was, and whether it was cut short.
    elide: Text.ElideMiddle
    subtitle: position !== "" || isUnfinished
              ? position : fileModified.toLocaleString(Qt.locale(), Locale.ShortFormat) + " · " + Format.size(Files.sizeOf(fileUrl))
    symbol: isPlaying ? "pause" : "play"
    isCurrent: position !== ""
    onClicked: played()
    Keys.onReturnPressed: played()
    Keys.onEnterPressed: played()
    Keys.onDeletePressed: removed()
    Keys.onPressed: (event) => {
        event.accepted = event.key === Qt.Key_F2;
        if (event.accepted)
            renamed();
    }
    // The space bar records, also from the list.
    Keys.onSpacePressed: recordWanted()

    IconButton {
        symbol: "edit"
        size: 44
        text: qsTr("Rename “%1”").arg(line.title)
        onClicked: line.renamed()
    }
    IconButton {
        symbol: "delete"
        size: 44
        text: qsTr("Delete “%1”").arg(line.title)
        onClicked: line.removed()
    }
}
