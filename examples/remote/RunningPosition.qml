import QtQuick
import voro.multimedia

/** Where the track is: as it was reported last, and on from there while it plays, because not every source reports often. */
Timer {
    id: running

    required property NowPlayingController controller
    readonly property bool isPlaying: controller.mediaState === MediaState.Started
    /** In milliseconds. */
    property real position: 0
    property real reported: 0
    property real reportedAt: 0

    function take() {
        reported = controller.position;
        reportedAt = Date.now();
        show();
    }
    function show() {
        const passed = isPlaying ? Date.now() - reportedAt : 0;
        position = controller.duration > 0 ? Math.min(reported + passed, controller.duration) : reported + passed;
    }

    interval: 500
    repeat: true
    onTriggered: show()
    onIsPlayingChanged: {
        // What was reached is kept until the next report.
        if (!isPlaying)
            reported = position;
        reportedAt = Date.now();
    }
    Component.onCompleted: take()

    readonly property Connections reports: Connections {
        target: running.controller
        function onPositionChanged() {
            running.take();
        }
        function onTrackChanged() {
            running.take();
        }
        // Whoever comes next may begin at the position that was reported last.
        function onMediaStateChanged() {
            if (running.controller.mediaState === MediaState.Stopped)
                running.take();
        }
    }
}
