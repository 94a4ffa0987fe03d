import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application
import voro.multimedia

/** What is played: its picture, its name, everything that can be done with it. */
FocusScope {
    id: page

    required property Playback player
    readonly property alias windowId: picture.windowId
    property bool canGoBack: false
    /** Films fill the screen. */
    property bool isCinema: false
    readonly property bool isFilling: isCinema && player.hasVideo

    signal back

    readonly property var speeds: [0.5, 0.75, 1, 1.25, 1.5, 2]
    readonly property var presets: [
        { text: qsTr("Off"), value: EqualizerPreset.Off },
        { text: qsTr("Against cabin noise"), value: EqualizerPreset.Airplane },
        { text: qsTr("More bass"), value: EqualizerPreset.BassBoost },
        { text: qsTr("More treble"), value: EqualizerPreset.TrebleBoost },
        { text: qsTr("Louder voices"), value: EqualizerPreset.VoiceBoost },
        { text: qsTr("Less bass"), value: EqualizerPreset.BassLower },
        { text: qsTr("Less treble"), value: EqualizerPreset.TrebleLower },
        { text: qsTr("Softer voices"), value: EqualizerPreset.VoiceLower },
        { text: qsTr("Acoustic"), value: EqualizerPreset.Acoustic },
        { text: qsTr("Dance"), value: EqualizerPreset.Dance },
        { text: qsTr("Electronic"), value: EqualizerPreset.Electronic },
        { text: qsTr("Hip hop"), value: EqualizerPreset.HipHop },
        { text: qsTr("Jazz"), value: EqualizerPreset.Jazz },
        { text: qsTr("Lounge"), value: EqualizerPreset.Lounge },
        { text: qsTr("Piano"), value: EqualizerPreset.Piano },
        { text: qsTr("Rhythm and blues"), value: EqualizerPreset.RhythmAndBlues },
        { text: qsTr("Rock"), value: EqualizerPreset.Rock },
        { text: qsTr("Spoken word"), value: EqualizerPreset.SpokenWord },
    ]

    /** Somebody is there. */
    function wake() {
        filling.wake();
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.margins: 4
            IconButton {
                visible: page.canGoBack
                symbol: "down"
                text: qsTr("Library")
                onClicked: page.back()
            }
            Item {
                Layout.fillWidth: true
                implicitHeight: Theme.touch
            }
            IconButton {
                symbol: "full-screen"
                text: qsTr("Full screen")
                visible: page.player.hasVideo
                onClicked: page.isCinema = true
            }
            IconButton {
                symbol: "captions"
                text: qsTr("Captions")
                visible: page.player.hasVideo
                checked: page.player.closedCaptionEnabled
                onClicked: captions.open()
            }
            IconButton {
                symbol: "speed"
                text: qsTr("Speed: %1×").arg(page.player.wantedSpeed)
                checked: page.player.wantedSpeed !== 1
                onClicked: speed.open()
            }
            IconButton {
                symbol: "equalizer"
                text: qsTr("Equalizer")
                checked: page.player.equalizerPreset !== EqualizerPreset.Off
                onClicked: equalizer.open()
            }
        }

        Item {
            id: holder
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24

            Picture {
                id: picture
                parent: page.isFilling ? filling.holder : holder
                anchors.fill: parent
                player: page.player
            }
            TapHandler {
                enabled: page.player.hasVideo
                onDoubleTapped: page.isCinema = true
            }
        }

        ColumnLayout {
            Layout.margins: 24
            Layout.topMargin: 16
            Layout.bottomMargin: 4
            spacing: 4
            Label {
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                text: page.player.isLoaded ? page.player.title : qsTr("Nothing is played")
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 2
                wrapMode: Text.Wrap
                font { pixelSize: 20; bold: true }
                Accessible.role: Accessible.Heading
            }
            Label {
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                text: page.player.isLoaded ? page.player.artist : qsTr("Choose something from the library.")
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: Theme.faint
            }
        }

        Transport {
            Layout.leftMargin: 14
            Layout.rightMargin: 14
            player: page.player
        }

        RowLayout {
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 4
            Layout.bottomMargin: 8
            spacing: 4
            Icon {
                symbol: page.player.volume > 0 ? "volume" : "mute"
                color: Theme.faint
            }
            Seeker {
                Layout.fillWidth: true
                present: page.player.volume
                isLive: true
                stepSize: 0.05
                Accessible.name: qsTr("Volume")
                onChosen: (volume) => page.player.volume = volume
            }
        }
    }

    FullScreen {
        id: filling
        anchors.fill: parent
        visible: page.isFilling
        player: page.player
        onClosed: page.isCinema = false
    }

    ChoiceSheet {
        id: speed
        title: qsTr("Speed")
        choices: page.speeds.map(factor => ({ text: factor + " ×", value: factor }))
        current: page.player.wantedSpeed
        onChosen: (factor) => page.player.chooseSpeed(factor)
    }
    ChoiceSheet {
        id: equalizer
        title: qsTr("Equalizer")
        choices: page.presets
        current: page.player.equalizerPreset
        onChosen: (preset) => page.player.equalizerPreset = preset
    }
    CaptionSheet {
        id: captions
        player: page.player
    }
}
