import QtQuick
import voro.application

/** The tracks that are played one after the other. */
ChoiceSheet {
    id: sheet

    required property Playback player

    title: qsTr("Queue")
    current: player.track
    choices: {
        const tracks = [];
        for (let i = 1; i <= player.trackCount; ++i)
            tracks.push({ value: i, text: i <= player.queue.length ? Files.nameOf(player.queue[i - 1]) : qsTr("Track %1").arg(i) });
        return tracks;
    }
    onChosen: (number) => player.goTo(number)
}
