import QtQuick
import voro.application
import voro.multimedia

/** How it sounds. */
ChoiceSheet {
    id: sheet

    required property Playback player

    title: qsTr("Equalizer")
    choices: [
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
    current: player.equalizerPreset
    onChosen: (preset) => sheet.player.equalizerPreset = preset
}
