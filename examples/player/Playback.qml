import QtQuick
import voro.application
import voro.multimedia

/** The player with its queue, and the device's now-playing role while it plays. */
MediaPlayer {
    id: player

    /** What is played one after the other; empty when only the renderer knows, as with a playlist from the net. */
    property list<url> queue
    /** Whether the queue is played in an order of its own, mixed anew each time. */
    property bool shuffles: false
    /** The queue in its own order. */
    property list<url> ordered
    /** What went wrong, in words; empty while nothing did. */
    property string problem: ""
    /** The factor that the user chose, which holds also while playback is paused. */
    property real wantedSpeed: 1
    /** Whether the role is to be asked for, once: what is heard and seen need not wait for it. */
    property bool wantsRole: false

    readonly property bool isPlaying: mediaState === MediaState.Started
    readonly property bool isLoaded: String(sourceUrl) !== ""
    // The linter knows no QSize.
    readonly property bool hasVideo: videoDimensions.width > 0 // qmllint disable
    readonly property url current: queue[track - 1] ?? sourceUrl
    readonly property string title: metaData[MetaData.Title] || (isLoaded ? Files.nameOf(current) : "")
    readonly property string artist: metaData[MetaData.Artist] || ""
    /** The attribute of a picture that is in the medium itself. */
    readonly property string embedded: "image"
    /** The one in the medium, or the one beside it. */
    readonly property url cover: metaData[embedded] ? Files.fileOf(metaData[embedded]) : Files.coverOf(current)
    readonly property bool canShuffle: queue.length > 1
    readonly property bool hasNext: track < trackCount
    readonly property bool hasPrevious: track > 1

    statusInterval: 500
    videoOutput: VideoOutput.PrimaryDisplay
    // Captions are drawn over the pictures.
    closedCaptionWindowId: windowId

    /** Plays the media from one of them on. */
    function open(media: var, index: int) {
        problem = "";
        ordered = media;
        if (shuffles) {
            media = mixed(media, index);
            index = 0;
        }
        take(media);
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
        ordered = media;
        if (shuffles && media.length > 1) {
            take(mixed(media, Math.floor(Math.random() * media.length)));
        } else {
            queue = media;
            sourceUrl = playlist;
        }
        resume();
    }

    function take(media: var) {
        queue = media;
        sourceUrl = media.length === 1 ? media[0] : Files.makeQueue(media);
    }

    /** Media in another order, the one that is chosen in front. */
    function mixed(media: var, first: int): var {
        const rest = media.filter((medium, index) => index !== first);
        for (let i = rest.length - 1; i > 0; --i) {
            const other = Math.floor(Math.random() * (i + 1));
            [rest[i], rest[other]] = [rest[other], rest[i]];
        }
        return [media[first], ...rest];
    }

    /** Mixes what comes after this track, or goes back to the queue's own order; this track plays on where it is. */
    function setShuffles(wanted: bool) {
        if (!canShuffle || wanted === shuffles)
            return;
        shuffles = wanted;
        const wasPlaying = isPlaying;
        const here = position;
        const index = track - 1;
        const next = wanted ? mixed(queue, index) : ordered;
        const number = wanted ? 1 : ordered.findIndex(medium => medium === queue[index]) + 1;
        take(next);
        if (!check(prepare()) || (number > 1 && !check(seekTrack(number))) || !check(seekTime(here)))
            return;
        if (wasPlaying)
            resume();
    }

    function resume() {
        if (!isLoaded || !check(play()))
            return;
        if (speed !== wantedSpeed)
            check(setSpeed(wantedSpeed));
        wantsRole = !role.acquired;
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

    onPositionChanged: {
        if (wantsRole && isPlaying) {
            wantsRole = false;
            role.acquire();
        }
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
        shuffleMode: !player.canShuffle ? ShuffleMode.Unsupported : player.shuffles ? ShuffleMode.All : ShuffleMode.Off

        onPlay: player.resume()
        onPause: player.check(player.pause())
        onStop: player.check(player.stop())
        onNext: player.goToNext()
        onPrevious: player.goToPrevious()
        onForward: player.seekBy(10000)
        onRewind: player.seekBy(-10000)
        onRepeat: player.goOnRepeating()
        onRepeatRequest: (mode) => player.repeatMode = mode
        onShuffle: player.setShuffles(!player.shuffles)
        onShuffleRequest: (mode) => player.setShuffles(mode === ShuffleMode.All)
        onRevoked: if (player.isPlaying) player.check(player.pause())
    }
}
