import QtQuick
import QtTest
import voro.multimedia
import voro.test

TestCase {
    id: test
    name: "nowplaying"

    NowPlayingConnection {
        id: connection
        property bool shownAcquired: acquired
        connectionName: "the test"
        metaData: ({ [MetaData.Title]: title, [MetaData.Artist]: "Somebody" })
        property string title: "First"
        duration: 1000
        onPause: mediaState = MediaState.Paused
        onPlay: mediaState = MediaState.Started
    }
    Component {
        id: rivals
        NowPlayingConnection {
            connectionName: "the rival"
            priorityLevel: PriorityLevel.High
        }
    }
    NowPlayingController {
        id: controller
        property string title: metaData[MetaData.Title] ?? ""
        property bool isPlaying: mediaState === MediaState.Started
    }
    SignalSpy {
        id: revoked
        target: connection
        signalName: "revoked"
    }

    function test_controller_isBoundToTheHolder() {
        compare(connection.acquire(), MediaError.None);
        verify(connection.shownAcquired);
        connection.mediaState = MediaState.Started;
        tryCompare(controller, "title", "First");
        tryCompare(controller, "isPlaying", true);
        compare(controller.duration, 1000);
        connection.title = "Second";
        tryCompare(controller, "title", "Second");
        compare(controller.playPause(), MediaError.None);
        tryCompare(connection, "mediaState", MediaState.Paused);
        tryCompare(controller, "isPlaying", false);

        const rival = createTemporaryObject(rivals, test);
        verify(!rival.preemptable);
        compare(rival.acquire(), MediaError.None);
        revoked.wait();
        verify(!connection.shownAcquired);
        compare(connection.lastRevokingConnectionName, "the rival");
        compare(rival.revoke(), MediaError.None);
        verify(!rival.acquired);
    }

    MediaKeyWatcher {
        id: watcher
        property var presses: []
        key: MediaKey.Play
    }
    Connections {
        id: shortListener
        target: null
        function onShortPress(key: int) { watcher.presses.push(key); }
    }
    Connections {
        id: longListener
        target: null
        function onLongPress(key: int) { watcher.presses.push(-key); }
    }

    /** The watcher tells of exactly the presses that somebody listens to, whatever its key is set to. */
    function test_watcher_followsKeyAndListeners_data() {
        const both = { short: true, long: true };
        return [
            { tag: "tap", listens: both, notification: MediaKeyNotification.Clicked, ms: 50, presses: [MediaKey.Next] },
            { tag: "hold", listens: both, notification: MediaKeyNotification.Threshold, ms: 900, presses: [-MediaKey.Next] },
            { tag: "hold, heard as tap", listens: { short: true, long: false }, ms: 900,
              notification: MediaKeyNotification.Threshold, presses: [MediaKey.Next] },
        ];
    }
    function test_watcher_followsKeyAndListeners(row) {
        watcher.presses = [];
        watcher.key = MediaKey.None;
        watcher.notification = row.notification;
        shortListener.target = row.listens.short ? watcher : null;
        longListener.target = row.listens.long ? watcher : null;
        wait(0);
        watcher.key = MediaKey.Next;
        World.press("next", row.ms);
        tryVerify(() => watcher.presses.length >= row.presses.length);
        compare(JSON.stringify(watcher.presses), JSON.stringify(row.presses));
    }
}
