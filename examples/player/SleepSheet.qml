import QtQuick
import voro.application

/** When playback is to pause. */
ChoiceSheet {
    id: sheet

    required property SleepTimer timer

    title: qsTr("Sleep timer")
    choices: [
        { text: qsTr("Off"), value: 0 },
        { text: qsTr("At the end of the track"), value: -1 },
        ...lengths.map(minutes => ({ text: qsTr("In %1 minutes").arg(minutes), value: minutes })),
    ]
    readonly property var lengths: [15, 30, 45, 60, 90]
    current: timer.minutes
    onChosen: (minutes) => sheet.timer.sleepAfter(minutes)
}
