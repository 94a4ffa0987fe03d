import QtQuick
import voro.application

/** Remembers where long media stopped, and offers to go on there. */
Item {
    id: resume

    required property Playback player
    /** Where the medium that plays stopped last time, in milliseconds; 0 when there is nothing to offer. */
    property real offered: 0
    /** The medium that stopped last, to go on with; empty without one. */
    readonly property url last: Object.keys(places).slice(-1)[0] ?? ""

    /** The medium whose position was reported last: another one may be the current one already. */
    property string medium: ""
    property real position: 0
    property real length: 0

    readonly property int leastDuration: 10 * 60 * 1000
    readonly property int margin: 30 * 1000
    readonly property int most: 100
    readonly property var places: JSON.parse(settings.places)

    visible: false

    /** Goes on where it is offered. */
    function accept() {
        if (offered > 0)
            player.check(player.seekTime(offered));
        offered = 0;
    }
    /** Opens the medium that stopped last, and goes on there. */
    function openLast() {
        const place = places[last];
        player.open([last], 0);
        player.check(player.seekTime(place));
        offered = 0;
    }

    /** Keeps where the medium was last; near its beginning and its end it need not go on anywhere. */
    function note() {
        if (length < leastDuration || (offered > 0 && medium === String(player.current)))
            return;
        const all = places;
        delete all[medium];
        if (position > margin && position < length - margin)
            all[medium] = position;
        for (const old of Object.keys(all).slice(0, -most))
            delete all[old];
        settings.places = JSON.stringify(all);
    }

    Settings {
        id: settings
        category: "resume"
        property string places: "{}"
    }
    Timer {
        interval: 10000
        repeat: true
        running: resume.player.isPlaying
        onTriggered: resume.note()
    }
    Timer {
        id: patience
        interval: 30000
        onTriggered: resume.offered = 0
    }
    Connections {
        target: resume.player
        function onCurrentChanged() {
            resume.offered = resume.places[resume.player.current] ?? 0;
            if (resume.offered > 0)
                patience.restart();
        }
        function onPositionChanged() {
            resume.medium = resume.player.current;
            resume.position = resume.player.position;
            resume.length = resume.player.length;
        }
        function onIsPlayingChanged() {
            if (!resume.player.isPlaying)
                resume.note();
        }
    }
    Component.onDestruction: note()
}
