import QtQuick

/** Pauses playback after a while, or when the medium ends. */
Timer {
    id: timer

    required property Playback player
    /** Minutes that were chosen; 0 for none, -1 for the end of the medium. */
    property int minutes: 0
    property date end

    function sleepAfter(length: int) {
        minutes = length;
        end = new Date(Date.now() + length * 60000);
    }
    function pause() {
        minutes = 0;
        if (player.isPlaying)
            player.check(player.pause());
    }

    // Looked at now and then, because the time may be set and the device may sleep.
    interval: 1000
    repeat: true
    running: minutes > 0
    onTriggered: if (Date.now() >= end.getTime()) pause()

    readonly property Connections events: Connections {
        target: timer.player
        enabled: timer.minutes < 0
        // Whoever goes to the next medium plays it afterwards.
        function onIndexChanged() {
            Qt.callLater(timer.pause); // qmllint disable
        }
        function onPlaybackCompleted() {
            timer.pause();
        }
    }
}
