import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.multimedia

/** Plays one film or song: picture, captions, position, space bar, errors in words. */
ApplicationWindow {
    id: window

    property url medium

    width: 640
    height: 420
    visible: true
    title: player.metaData[MetaData.Title] || "Player"
    color: "black"

    MediaPlayer {
        id: player
        sourceUrl: window.medium
        videoOutput: VideoOutput.PrimaryDisplay
        windowId: video.windowId
        closedCaptionWindowId: video.windowId
        statusInterval: 250
        onError: (error) => message.text = MediaErrors.text(error)
        Component.onCompleted: if (String(window.medium) !== "") window.check(play())
    }
    VideoWindow {
        id: video
        anchors { fill: parent; bottomMargin: bar.height }
    }
    Label {
        id: message
        anchors.centerIn: video
        color: "white"
    }
    RowLayout {
        id: bar
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        Button {
            text: player.mediaState === MediaState.Started ? "Pause" : "Play"
            focus: true
            onClicked: window.check(player.mediaState === MediaState.Started ? player.pause() : player.play())
        }
        Slider {
            id: position
            Layout.fillWidth: true
            to: Math.max(1, player.duration)
            enabled: player.seekable
            onMoved: player.seekTime(value)
            // The handle follows playback while nobody holds it.
            Binding on value {
                when: !position.pressed
                value: player.position
                restoreMode: Binding.RestoreNone
            }
        }
    }

    function check(result: int) {
        message.text = MediaErrors.text(result);
    }
}
