import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application
import voro.multimedia

/** Where playback is and what is to become of it. */
ColumnLayout {
    id: transport

    required property Playback player
    /** Where it is; what cannot be played is nowhere, whatever the last one reported. */
    readonly property real here: player.isPlaying || player.length > 0 ? player.position : 0

    function showQueue() {
        if (player.count > 1)
            queue.open();
    }

    spacing: 0
    // Time runs from left to right in every language, and so do the buttons that go along it.
    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true

    Seeker {
        id: seeker
        Layout.fillWidth: true
        to: Math.max(1, transport.player.length)
        enabled: transport.player.canSeek
        Accessible.name: qsTr("Position")
        stepSize: 10000
        present: transport.player.length > 0 ? transport.here : 0
        onChosen: (milliseconds) => transport.player.check(transport.player.seekTime(milliseconds))
    }
    RowLayout {
        Layout.leftMargin: 10
        Layout.rightMargin: 10
        Layout.topMargin: -8
        Label {
            text: Format.time(seeker.pressed ? seeker.value : transport.here)
            color: Theme.faint
        }
        Label {
            // It begins where the rest of the line does, so that it need not be moved when the text becomes larger.
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop
            horizontalAlignment: Text.AlignRight
            text: transport.player.length > 0 ? Format.time(transport.player.length) : "–:––"
            color: Theme.faint
        }
    }
    RowLayout {
        Layout.alignment: Qt.AlignHCenter
        spacing: 2
        IconButton {
            readonly property int mode: transport.player.repeats
            symbol: mode === RepeatMode.Track ? "repeat-one" : "repeat"
            text: mode === RepeatMode.Track ? qsTr("Repeats the track")
                : mode === RepeatMode.All ? qsTr("Repeats everything") : qsTr("Repeats nothing")
            isOn: mode !== RepeatMode.None
            onClicked: transport.player.goOnRepeating()
        }
        IconButton {
            symbol: "shuffle"
            text: transport.player.shuffles ? qsTr("Plays in a mixed order") : qsTr("Plays in order")
            enabled: transport.player.canShuffle
            isOn: transport.player.shuffles
            onClicked: transport.player.setShuffles(!transport.player.shuffles)
        }
        IconButton {
            symbol: "previous"
            text: qsTr("Previous track")
            enabled: transport.player.isLoaded
            onClicked: transport.player.goToPrevious()
        }
        IconButton {
            symbol: transport.player.isPlaying ? "pause" : "play"
            text: transport.player.isPlaying ? qsTr("Pause") : qsTr("Play")
            size: 64
            isMain: true
            enabled: transport.player.isLoaded
            onClicked: transport.player.toggle()
        }
        IconButton {
            symbol: "next"
            text: qsTr("Next track")
            enabled: transport.player.hasNext
            onClicked: transport.player.goToNext()
        }
        IconButton {
            symbol: "queue"
            text: qsTr("Queue")
            enabled: transport.player.count > 1
            onClicked: transport.showQueue()
        }
    }

    LazySheet {
        id: queue
        sheet: Qt.resolvedUrl("QueueSheet.qml")
        properties: ({ player: transport.player })
    }
}
