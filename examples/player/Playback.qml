import QtQuick
import voro.application
import voro.multimedia

/** The player with its queue, and the device's now-playing role while it plays. */
MediaPlayer {
    id: player

    /** What is played one after the other; empty when only the renderer knows, as with a playlist from the net. */
    property list<url> queue
    /** What went wrong, in words; empty while nothing did. */
    property string problem: ""
    /** The factor that the user chose, which holds also while playback is paused. */
    property real wantedSpeed: 1

    readonly property bool isPlaying: mediaState === MediaState.Started
    readonly property bool isLoaded: String(sourceUrl) !== ""
    // The linter knows no QSize.
    readonly property bool hasVideo: videoDimensions.width > 0 // qmllint disable
    readonly property url current: queue[track - 1] ?? sourceUrl
    readonly property string title: metaData[MetaData.Title] || (isLoaded ? Files.nameOf(current) : "")
    readonly property string artist: metaData[MetaData.Artist] || ""
    readonly property url cover: Files.coverOf(current)
    readonly property bool hasNext: track < trackCount
    readonly property bool hasPrevious: track > 1

    statusInterval: 500
    videoOutput: VideoOutput.PrimaryDisplay
    // Captions are drawn over the pictures.
    closedCaptionWindowId: windowId

    /** Plays the media from one of them on. */
    function open(media: var, index: int) {
        problem = "";
        queue = media;
        sourceUrl = media.length === 1 ? media[0] : Files.makeQueue(media);
        const captions = Files.captionsOf(media[0]);
        if (media.length === 1 && String(captions) !== "")
            check(setClosedCaptionUrl(1, captions));
        if (!check(prepare()))
            return;
        if (index > 0 && !check(seekTrack(index + 1)))
            return;
        resume();
    }

    /** Plays a playlist, whose tracks are known where it can be read here. */
    function openPlaylist(playlist: url) {
        const media = Files.readPlaylist(playlist);
        problem = "";
        queue = media;
        sourceUrl = playlist;
        resume();
    }

    function resume() {
        if (!isLoaded || !check(play()))
            return;
        if (speed !== wantedSpeed)
            check(setSpeed(wantedSpeed));
        if (!role.acquired)
            role.acquire();
    }

    function toggle() {
        if (isPlaying)
            check(pause());
        else
            resume();
    }

    function chooseSpeed(factor: real) {
        wantedSpeed = factor;
        if (isPlaying)
            check(setSpeed(factor));
    }

    function goTo(number: int) {
        if (check(seekTrack(number)))
            resume();
    }
    function goToNext() {
        if (hasNext && check(nextTrack()))
            resume();
    }
    /** The track before this one, or this one's beginning when it has played for a while. */
    function goToPrevious() {
        if (hasPrevious && position < 3000 ? check(previousTrack()) : check(seekTime(0)))
            resume();
    }
    function seekBy(milliseconds: int) {
        if (seekable)
            check(seekTime(Math.min(Math.max(0, position + milliseconds), Math.max(0, duration - 500))));
    }
    function goOnRepeating() {
        repeatMode = repeatMode === RepeatMode.None ? RepeatMode.All
                   : repeatMode === RepeatMode.All ? RepeatMode.Track : RepeatMode.None;
    }

    /** Keeps what a command's failure means; true when it did not fail. */
    function check(result: int): bool {
        if (result !== MediaError.None)
            problem = qsTr("“%1”: %2").arg(title).arg(MediaErrors.text(result));
        return result === MediaError.None;
    }

    onError: (mediaError) => check(mediaError)
    onTrackChanged: if (role.acquired) role.trackChange()

    readonly property NowPlayingConnection role: NowPlayingConnection {
        connectionName: qsTr("Voro Player")
        overlayStyle: OverlayStyle.Fancy
        mediaState: player.mediaState
        metaData: ({ [MetaData.Title]: player.title, [MetaData.Artist]: player.artist,
                     [MetaData.Album]: player.metaData[MetaData.Album] || "" })
        iconUrl: player.cover
        duration: player.duration
        position: player.position
        nextEnabled: player.hasNext
        previousEnabled: player.isLoaded
        repeatMode: player.repeatMode
        shuffleMode: ShuffleMode.Unsupported

        onPlay: player.resume()
        onPause: player.check(player.pause())
        onStop: player.check(player.stop())
        onNext: player.goToNext()
        onPrevious: player.goToPrevious()
        onForward: player.seekBy(10000)
        onRewind: player.seekBy(-10000)
        onRepeat: player.goOnRepeating()
        onRepeatRequest: (mode) => player.repeatMode = mode
        onRevoked: if (player.isPlaying) player.check(player.pause())
    }
}
