import QtQuick
import voro.multimedia

/** The device's now-playing role, which the player takes when it plays. */
NowPlayingConnection {
    id: role

    required property Playback player
    /** Whether the role is to be asked for, once: what is heard and seen need not wait for it. */
    property bool isWanted: false

    connectionName: qsTr("Voro Player")
    overlayStyle: OverlayStyle.Fancy
    mediaState: player.mediaState
    metaData: ({ [MetaData.Title]: player.title, [MetaData.Artist]: player.artist,
                 [MetaData.Album]: player.metaData[MetaData.Album] || "" })
    iconUrl: player.cover
    duration: player.length
    position: player.position
    nextEnabled: player.hasNext
    previousEnabled: player.isLoaded
    repeatMode: player.repeats
    shuffleMode: !player.canShuffle ? ShuffleMode.Unsupported : player.shuffles ? ShuffleMode.All : ShuffleMode.Off

    onPlay: player.resume()
    onPause: player.check(player.pause())
    onStop: player.check(player.stop())
    onNext: player.goToNext()
    onPrevious: player.goToPrevious()
    onForward: player.seekBy(10000)
    onRewind: player.seekBy(-10000)
    onRepeat: player.goOnRepeating()
    onRepeatRequest: (mode) => player.repeats = mode
    onShuffle: player.setShuffles(!player.shuffles)
    onShuffleRequest: (mode) => player.setShuffles(mode === ShuffleMode.All)
    onRevoked: if (player.isPlaying) player.check(player.pause())

    readonly property Connections events: Connections {
        target: role.player
        function onResumed() {
            role.isWanted = !role.acquired;
        }
        function onPositionChanged() {
            if (role.isWanted && role.player.isPlaying) {
                role.isWanted = false;
                role.acquire();
            }
        }
        function onIndexChanged() {
            if (role.acquired)
                role.trackChange();
        }
    }
}
