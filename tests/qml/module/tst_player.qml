import QtQuick
import QtTest
import voro.multimedia
import voro.test

TestCase {
    id: test
    name: "player"

    Component {
        id: players
        MediaPlayer {
            property string title: metaData[MetaData.Title] ?? ""
            property bool isPlaying: mediaState === MediaState.Started
            property var positions: []
            readonly property Timer timer: Timer { }
            statusInterval: 100
            onPositionChanged: (position) => positions.push(position)
            QtObject { objectName: "written inside" }
        }
    }

    function test_bindings_followTheMedium() {
        const player = createTemporaryObject(players, test, { sourceUrl: World.tone("bindings.ogg", 20, "A tone") });
        compare(player.play(), MediaError.None);
        verify(player.isPlaying);
        tryCompare(player, "title", "A tone");
        tryVerify(() => player.duration > 19000 && player.duration < 21000);
        tryVerify(() => player.positions.length > 2 && player.position > 0);
        verify(player.seekable);
        compare(player.seekTime(10000), MediaError.None);
        tryVerify(() => player.position >= 10000);
        player.speed = 0;
        compare(player.mediaState, MediaState.Paused);
        verify(!player.isPlaying);
        compare(player.reset(), MediaError.None);
        compare(player.mediaState, MediaState.Unprepared);
    }

    function test_objects_canBeWrittenInside() {
        const player = createTemporaryObject(players, test);
        compare(player.data.length, 1);
        compare(player.data[0].objectName, "written inside");
    }

    AudioRecorder {
        id: recorder
        property real shownLevel: recordingLevel
        property url shownFile: outputUrl
        statusInterval: 50
    }
    function test_recorder_bindingsFollow() {
        const file = World.place("take.wav");
        recorder.outputUrl = file;
        compare(recorder.shownFile, file);
        compare(recorder.record(), MediaError.None);
        tryVerify(() => recorder.duration > 200 && recorder.shownLevel > 0.1);
        compare(recorder.pause(), MediaError.None);
        compare(recorder.mediaState, MediaState.Paused);
        compare(recorder.reset(), MediaError.None);
        compare(recorder.duration, 0);
        compare(recorder.shownLevel, 0);

        const player = createTemporaryObject(players, test, { sourceUrl: file });
        compare(player.prepare(), MediaError.None);
        tryVerify(() => player.duration > 200);
    }
}
