import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
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

    /** With about how many bytes a second of sound has in each. */
    readonly property var formats: [
        { text: qsTr("Ogg Opus: small"), name: "Opus", value: "opus", rate: 12000 },
        { text: qsTr("Ogg Vorbis: small"), name: "Vorbis", value: "ogg", rate: 14000 },
        { text: qsTr("MP3: plays anywhere"), name: "MP3", value: "mp3", rate: 24000 },
        { text: qsTr("AAC: small, plays on phones"), name: "AAC", value: "m4a", rate: 16000 },
        { text: qsTr("AMR: speech only, tiny"), name: "AMR", value: "amr", rate: 1600 },
        { text: qsTr("FLAC: without loss"), name: "FLAC", value: "flac", rate: 100000 },
        { text: qsTr("WAV: as it is"), name: "WAV", value: "wav", rate: 192000 },
    ]
    readonly property var layouts: [
        { text: qsTr("As the microphone has them"), name: qsTr("Auto"), value: AudioChannelConfiguration.Default },
        { text: qsTr("Mono"), name: qsTr("Mono"), value: AudioChannelConfiguration.Mono },
        { text: qsTr("Stereo"), name: qsTr("Stereo"), value: AudioChannelConfiguration.Stereo },
    ]
    readonly property var formatInUse: formats.find(format => format.value === settings.format) ?? formats[1]
    readonly property var channelsInUse: layouts.find(choice => choice.value === recorder.audioChannelConfiguration)
    property real freeSpace: 0

    padding: Theme.margin
    background: Rectangle {
        color: Theme.surface
    }

    function check(result: int): bool {
        if (result !== MediaError.None)
            failed(MediaErrors.recordingText(result, recorder.outputUrl));
        return result === MediaError.None;
    }

    function chooseFormat() {
        if (!isRecording)
            format.open();
    }
    function measureSpace() {
        freeSpace = Files.freeSpaceOf(Files.recordings);
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
        record.forceActiveFocus(Qt.OtherFocusReason);
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
            const recording = panel.file;
            panel.finish();
            const reason = MediaErrors.recordingText(mediaError, recording);
            const hasContent = Files.markCutShort(recording);
            panel.failed(hasContent ? qsTr("The recording has ended: %1 What was recorded is in the list.").arg(reason) : reason);
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
            font { pixelSize: Theme.fontSize * 2; weight: Font.Light }
            Accessible.name: qsTr("Recorded: %1").arg(text)
        }
        Label {
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            visible: panel.freeSpace >= 0
            text: qsTr("%1 free, enough for %2").arg(Format.size(panel.freeSpace)).arg(Format.span(panel.freeSpace / panel.formatInUse.rate))
            color: panel.freeSpace / panel.formatInUse.rate < 600 ? Theme.warning : Theme.faint
            font.pixelSize: Theme.smallSize
        }
        RowLayout {
            spacing: 12
            TextButton {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: panel.formatInUse.name
                Accessible.name: qsTr("Format: %1").arg(text)
                visible: !panel.isRecording
                onClicked: panel.chooseFormat()
            }
            Item {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                visible: panel.isRecording
            }
            AbstractButton {
                id: record
                implicitWidth: 76
                implicitHeight: 76
                focus: true
                Keys.onReturnPressed: panel.isRecording ? panel.finish() : panel.toggle()
                Keys.onEnterPressed: panel.isRecording ? panel.finish() : panel.toggle()
                text: recorder.mediaState === MediaState.Started ? qsTr("Pause") : panel.isHeld ? qsTr("Resume") : qsTr("Record")
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
            TextButton {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: panel.channelsInUse.name
                Accessible.name: qsTr("Channels: %1").arg(text)
                visible: !panel.isRecording
                onClicked: channels.open()
            }
            TextButton {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: qsTr("Finish")
                isMain: true
                visible: panel.isRecording
                onClicked: panel.finish()
            }
        }
    }
    Timer {
        interval: 5000
        running: true
        repeat: true
        triggeredOnStart: true
        onTriggered: panel.measureSpace()
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
        choices: panel.layouts
        current: recorder.audioChannelConfiguration
        onChosen: (value) => recorder.audioChannelConfiguration = value
    }
}
