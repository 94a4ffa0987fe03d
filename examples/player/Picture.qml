import QtQuick
import voro.application
import voro.multimedia

/** What there is to see of the medium: its pictures and captions, or its cover. */
Item {
    id: picture

    required property Playback player
    /** What the player names the place of its pictures by. */
    readonly property string windowId: video.windowId

    // The last picture of a film stays there until another one comes, which a medium that fails never brings.
    readonly property bool hasPicture: video.hasPicture && (player.hasVideo || player.isPlaying)

    VideoWindow {
        id: video
        anchors.fill: parent
        opacity: picture.hasPicture ? 1 : 0
        Accessible.role: Accessible.Graphic
        Accessible.name: picture.hasPicture ? qsTr("Film") : ""
    }
    Cover {
        visible: !picture.hasPicture
        anchors.centerIn: parent
        width: Math.min(parent.width, parent.height, 420)
        height: width
        source: picture.player.cover
        placeholder: picture.player.hasVideo ? "film" : "note"
    }
}
