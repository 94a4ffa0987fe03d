import QtQuick
import voro.application
import voro.multimedia
import voro.player

/** The player with its queue. */
MediaPlayer {
    id: player

    /** What is played one after the other; empty when only the renderer knows, as with a playlist from the net. */
    property list<url> queue
    /** The queue in its own order. */
    property list<url> ordered
    /** Whether the queue is played in an order of its own, mixed anew each time. */
    property bool shuffles: false
    /** What is repeated. */
    property int repeats: RepeatMode.None
    /** Whether each medium of the queue is opened by itself, for the sake of its captions; else the renderer has the whole
        queue, and goes from one medium to the next without a gap. */
    property bool isSingly: false
    /** The place in the queue of the medium that is open by itself. */
    property int place: 0
    /** The place of the medium that was asked for and has yet to play; -1 while none is. */
    property int asked: -1
    /** The file that the captions come from; empty for those in the medium itself. */
    property url captions
    /** Whose captions were chosen last, by the user's language. */
    property url captionedMedium
    /** What went wrong, in words; empty while nothing did. */
    property string problem: ""
    /** The factor that the user chose, which holds also while playback is paused. */
    property real wantedSpeed: 1
    /** The loudness that the user chose, which stays while nothing is heard. */
    property real loudness: 1
    property bool isMuted: false
    /** Knows the titles of media that have not been played yet; null while nobody wants it. */
    property Library library: null

    readonly property bool isPlaying: mediaState === MediaState.Started
    readonly property bool isLoaded: String(sourceUrl) !== ""
    // What the track tells of itself: duration and seekable are reset with each queue, and do not come back when the next
    // track has the same ones.
    readonly property real length: isLoaded && metaData[MetaData.Duration] || 0
    readonly property bool canSeek: isLoaded && metaData[MetaData.Seekable] || false
    // The linter knows no QSize.
    readonly property bool hasVideo: videoDimensions.width > 0 // qmllint disable
    readonly property int index: isSingly ? place : track - 1
    readonly property int count: Math.max(queue.length, trackCount)
    readonly property url current: queue[index] ?? sourceUrl
    readonly property string title: metaData[MetaData.Title] || (isLoaded ? Files.nameOf(current) : "")
    readonly property string artist: metaData[MetaData.Artist] || ""
    /** The attribute of a picture that is in the medium itself. */
    readonly property string embedded: "image"
    /** Those of its captions, and of captions that cannot be read. */
    readonly property string captionsKey: "captions"
    readonly property string unreadableKey: "captions_unreadable"
    /** The one in the medium, or the one beside it. */
    readonly property url cover: metaData[embedded] ? Files.fileOf(metaData[embedded]) : Files.coverOf(current)
    readonly property bool canShuffle: queue.length > 1
    /** The captions in the medium itself: objects with a `language`, as a code, and a `title`. */
    readonly property var captionStreams: metaData[captionsKey] ?? []
    readonly property bool areCaptionsUnreadable: metaData[unreadableKey] ?? false
    readonly property bool hasNext: index + 1 < count
    readonly property bool hasPrevious: index > 0

    /** A medium of the queue begins, or plays on where it was. */
    signal resumed
    /** Somebody wants the library to be there. */
    signal libraryWanted

    statusInterval: 500
    videoOutput: VideoOutput.PrimaryDisplay
    // Captions are drawn over the pictures.
    closedCaptionWindowId: windowId
    volume: isMuted ? 0 : loudness
    // What is open by itself is all that the renderer knows of.
    repeatMode: isSingly && repeats === RepeatMode.All ? RepeatMode.None : repeats

    /** Plays media from one of them on. */
    function open(media: var, first: int) {
        problem = "";
        ordered = media;
        if (shuffles) {
            media = mixed(media, first);
            first = 0;
        }
        if (load(media, first))
            resume();
    }

    /** Plays a playlist, whose tracks are known where it can be read here. */
    function openPlaylist(playlist: url) {
        const media = [...Files.readPlaylist(playlist)];
        if (media.length > 0) {
            open(media, shuffles ? Math.floor(Math.random() * media.length) : 0);
            return;
        }
        problem = "";
        queue = [];
        isSingly = false;
        sourceUrl = playlist;
        resume();
    }

    function titleOf(medium: url): string {
        return library && library.titlesFound >= 0 ? library.titleOf(medium) : Files.nameOf(medium);
    }

    /** Opens a queue at one of its media. */
    function load(media: var, number: int): bool {
        queue = media;
        isSingly = media.length > 1 && media.some(medium => Files.captionsOf(medium).length > 0);
        if (media.length === 1 || isSingly)
            return loadAlone(number);
        sourceUrl = Files.makeQueue(media);
        asked = number;
        return check(prepare()) && (number === 0 || check(seekTrack(number + 1)));
    }

    function loadAlone(number: int): bool {
        place = number;
        asked = -1;
        sourceUrl = queue[number];
        showCaptions(Files.captionsOf(queue[number])[0]?.url ?? "");
        return check(prepare());
    }

    /** Shows captions from a file; without one those in the medium itself. */
    function showCaptions(file: url) {
        if (String(file) !== String(captions) && check(setClosedCaptionUrl(1, file)))
            captions = file;
    }

    /** Shows captions of the medium itself. */
    function showCaptionStream(number: int) {
        showCaptions("");
        closedCaptionIndex = number;
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
        if (wanted)
            rearrange(mixed(queue, index), 0);
        else
            rearrange(ordered, [...ordered].findIndex(medium => String(medium) === String(current)));
    }

    /** Takes another queue, in which the medium that plays has this place; it plays on where it is. */
    function rearrange(media: var, number: int) {
        if (isSingly && media.length > 1) {
            queue = media;
            place = number;
            return;
        }
        const wasPlaying = isPlaying;
        const here = position;
        if (load(media, number) && check(seekTime(here)) && wasPlaying)
            resume();
    }

    /** Moves a medium of the queue to another place of it. */
    function move(from: int, to: int) {
        const places = [...Array(queue.length).keys()];
        places.splice(to, 0, ...places.splice(from, 1));
        const media = places.map(place => queue[place]);
        if (!shuffles)
            ordered = media;
        rearrange(media, places.indexOf(index));
    }

    /** Takes a medium out of the queue; the next one plays if it was this one's turn. */
    function remove(number: int) {
        const media = [...queue].filter((medium, index) => index !== number);
        ordered = shuffles ? [...ordered].filter(medium => String(medium) !== String(queue[number])) : media;
        if (number !== index) {
            rearrange(media, index - (number < index ? 1 : 0));
            return;
        }
        const wasPlaying = isPlaying;
        if (media.length === 0) {
            queue = [];
            sourceUrl = "";
        } else if (load(media, Math.min(number, media.length - 1)) && wasPlaying) {
            resume();
        }
    }

    /** Puts media into the queue, right after this one or at its end; without a queue they play at once. */
    function add(media: var, isNext: bool) {
        if (queue.length === 0) {
            open(media, 0);
            return;
        }
        const before = isNext ? index + 1 : queue.length;
        ordered = [...ordered, ...media];
        rearrange([...queue.slice(0, before), ...media, ...queue.slice(before)], index);
    }

    function resume() {
        if (!isLoaded || !check(play()))
            return;
        if (speed !== wantedSpeed)
            check(setSpeed(wantedSpeed));
        resumed();
    }

    function toggle() {
        problem = "";
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
        problem = "";
        asked = number;
        if (isSingly ? loadAlone(number) : check(seekTrack(number + 1)))
            resume();
    }
    function goToNext() {
        if (!hasNext)
            return;
        if (isSingly ? loadAlone(index + 1) : check(nextTrack()))
            resume();
    }
    /** The track before this one, or this one's beginning when it has played for a while. */
    function goToPrevious() {
        if (!hasPrevious || position >= 3000) {
            if (check(seekTime(0)))
                resume();
        } else if (isSingly ? loadAlone(index - 1) : check(previousTrack())) {
            resume();
        }
    }
    /** Goes on to the next medium of a queue that is played singly, past those that cannot be played. */
    function goOn() {
        for (let tries = 0; tries < queue.length; ++tries) {
            const number = index + 1 < queue.length ? index + 1 : repeats === RepeatMode.All ? 0 : -1;
            if (number < 0)
                return;
            if (loadAlone(number)) {
                resume();
                return;
            }
        }
    }
    function seekBy(milliseconds: int) {
        if (canSeek)
            check(seekTime(Math.min(Math.max(0, position + milliseconds), Math.max(0, length - 500))));
    }
    function goOnRepeating() {
        repeats = repeats === RepeatMode.None ? RepeatMode.All
                : repeats === RepeatMode.All ? RepeatMode.Track : RepeatMode.None;
    }
    function changeVolume(by: real) {
        isMuted = false;
        loudness = Math.min(1, Math.max(0, loudness + by));
    }

    /** Keeps what a command's failure means; true when it did not fail. */
    function check(result: int): bool {
        if (result !== MediaError.None)
            problem = qsTr("“%1”: %2").arg(titleOf(current)).arg(MediaErrors.text(result, current));
        return result === MediaError.None;
    }

    onError: (mediaError) => check(mediaError)
    onAreCaptionsUnreadableChanged: {
        if (areCaptionsUnreadable)
            problem = qsTr("The captions “%1” cannot be read.").arg(Files.nameOf(captions));
    }
    onCaptionStreamsChanged: {
        if (captionStreams.length === 0 || String(captionedMedium) === String(current))
            return;
        captionedMedium = current;
        closedCaptionIndex = Math.max(0, captionStreams.findIndex(stream => Files.isOwnLanguage(stream.language)));
    }
    onPlaybackCompleted: if (isSingly) goOn()
    onPositionChanged: {
        if (!isPlaying || asked < 0)
            return;
        // The renderer passes over what it cannot play, which it may find out late.
        if (asked !== index) {
            problem = qsTr("“%1” cannot be played.").arg(Files.nameOf(queue[asked] ?? ""));
            check(pause());
            asked = -1;
        } else if (player.position > 0) {
            asked = -1;
        }
    }
}
