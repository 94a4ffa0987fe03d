import QtQuick
import voro.application
import voro.multimedia

/** What there is to see of the medium: its pictures and captions, or its cover. */
Item {
    id: picture

    required property Playback player
    /** What the player names the place of its pictures by. */
    readonly property string windowId: video.windowId

    VideoWindow {
        id: video
        anchors.fill: parent
        Accessible.role: Accessible.Graphic
        Accessible.name: hasPicture ? qsTr("Film") : ""
    }
    Cover {
        visible: !video.hasPicture
        anchors.centerIn: parent
        width: Math.min(parent.width, parent.height, 420)
        height: width
        source: picture.player.cover
        placeholder: picture.player.hasVideo ? "film" : "note"
    }
}
