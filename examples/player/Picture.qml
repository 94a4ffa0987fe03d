import QtQuick
import voro.application

/** What there is to see of the medium. */
Item {
    id: picture

    required property Playback player

    Cover {
        anchors.centerIn: parent
        width: Math.min(parent.width, parent.height, 420)
        height: width
        source: picture.player.cover
        placeholder: picture.player.hasVideo ? "film" : "note"
    }
}
