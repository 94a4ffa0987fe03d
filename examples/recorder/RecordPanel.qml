import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Qt.labs.settings
import voro.application
import voro.multimedia

/** Records: level, time, and the buttons for it. */
Pane {
    id: panel

    readonly property bool isRecording: recorder.mediaState === MediaState.Started || isHeld
    readonly property bool isHeld: recorder.mediaState === MediaState.Paused
    readonly property alias duration: recorder.duration
    /** The file that is being written; empty while none is. */
    property url file

    signal started
    signal failed(problem: string)

    readonly property var formats: [
        { text: qsTr("Ogg Opus: small"), value: "opus" },
        { text: qsTr("Ogg Vorbis: small"), value: "ogg" },
        { text: qsTr("MP3: plays anywhere"), value: "mp3" },
        { text: qsTr("FLAC: without loss"), value: "flac" },
        { text: qsTr("WAV: as it is"), value: "wav" },
    ]
    readonly property var channels: [
        { text: qsTr("As the microphone has them"), value: AudioChannelConfiguration.Default },
        { text: qsTr("Mono"), value: AudioChannelConfiguration.Mono },
        { text: qsTr("Stereo"), value: AudioChannelConfiguration.Stereo },
    ]

    padding: Theme.margin
    background: Rectangle {
        color: Theme.surface
    }

    function check(result: int): bool {
        if (result !== MediaError.None)
            failed(MediaErrors.text(result));
        return result === MediaError.None;
    }

    function start() {
        started();
        meter.clear();
        const recording = Files.newRecording(settings.format);
        recorder.outputUrl = recording;
        if (check(recorder.record()))
            file = recording;
    }

    function finish() {
        check(recorder.reset());
        file = "";
        meter.clear();
    }

    function toggle() {
        if (recorder.mediaState === MediaState.Started)
            check(recorder.pause());
        else if (isHeld)
            check(recorder.record());
        else
            start();
    }

    Settings {
        id: settings
        property string format: "ogg"
        property alias channels: recorder.audioChannelConfiguration
    }

    AudioRecorder {
        id: recorder
        statusInterval: 100
        // The level is reported only when it changes, the duration as often as it was asked for.
        onDurationChanged: {
            if (mediaState === MediaState.Started)
                meter.add(recordingLevel);
        }
        onError: (mediaError) => {
            panel.check(mediaError);
            panel.finish();
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 8

        LevelMeter {
            id: meter
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.maximumHeight: 200
        }
        Label {
            Layout.alignment: Qt.AlignHCenter
            text: Format.time(recorder.duration)
            color: panel.isRecording ? Theme.text : Theme.faint
            font { pixelSize: 32; weight: Font.Light }
            Accessible.name: qsTr("Recorded: %1").arg(text)
        }
        RowLayout {
            Layout.alignment: Qt.AlignHCenter
            spacing: 20
            IconButton {
                symbol: "equalizer"
                text: qsTr("Format: %1").arg(settings.format)
                enabled: !panel.isRecording
                onClicked: format.open()
            }
            AbstractButton {
                id: record
                implicitWidth: 76
                implicitHeight: 76
                focus: true
                text: recorder.mediaState === MediaState.Started ? qsTr("Hold") : panel.isHeld ? qsTr("Go on") : qsTr("Record")
                Accessible.name: text
                onClicked: panel.toggle()
                background: Rectangle {
                    radius: width / 2
                    color: "transparent"
                    border.width: record.visualFocus ? 5 : 3
                    border.color: record.visualFocus ? Theme.accent : Theme.faint
                }
                contentItem: Item {
                    Rectangle {
                        anchors.centerIn: parent
                        visible: recorder.mediaState !== MediaState.Started
                        width: record.down ? 50 : 56
                        height: width
                        radius: width / 2
                        color: Theme.warning
                    }
                    Icon {
                        anchors.centerIn: parent
                        visible: recorder.mediaState === MediaState.Started
                        symbol: "pause"
                        size: 40
                        color: Theme.warning
                    }
                }
            }
            IconButton {
                symbol: panel.isRecording ? "check" : "microphone"
                text: panel.isRecording ? qsTr("Finish") : qsTr("Channels")
                checked: panel.isRecording
                onClicked: panel.isRecording ? panel.finish() : channels.open()
            }
        }
    }

    ChoiceSheet {
        id: format
        title: qsTr("Format")
        choices: panel.formats
        current: settings.format
        onChosen: (value) => settings.format = value
    }
    ChoiceSheet {
        id: channels
        title: qsTr("Channels")
        choices: panel.channels
        current: recorder.audioChannelConfiguration
        onChosen: (value) => recorder.audioChannelConfiguration = value
    }
}
