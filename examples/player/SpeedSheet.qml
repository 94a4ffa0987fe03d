import QtQuick
import voro.application

/** How fast it is played. */
ChoiceSheet {
    id: sheet

    required property Playback player

    title: qsTr("Speed")
    choices: {
        const factors = [0.5, 0.75, 1, 1.25, 1.5, 2];
        return factors.map(factor => ({ text: Format.factor(factor) + " ×", value: factor }));
    }
    current: player.wantedSpeed
    onChosen: (factor) => sheet.player.chooseSpeed(factor)
}
