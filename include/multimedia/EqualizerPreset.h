#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** Named settings of the player's equalizer. */
class VOROMULTIMEDIA_EXPORT EqualizerPreset {
    Q_GADGET
public:
    enum Type : int {
        /** No equalizer. */
        Off = 0,
        /** Against the noise of a cabin. */
        Airplane = 1,
        /** More bass. */
        BassBoost = 2,
        /** More treble. */
        TrebleBoost = 3,
        /** Louder voices. */
        VoiceBoost = 4,
        /** Less bass. */
        BassLower = 5,
        /** Less treble. */
        TrebleLower = 6,
        /** Softer voices. */
        VoiceLower = 7,
        /** For acoustic instruments. */
        Acoustic = 8,
        /** For dance music. */
        Dance = 9,
        /** For electronic music. */
        Electronic = 10,
        /** For hip hop. */
        HipHop = 11,
        /** For jazz. */
        Jazz = 12,
        /** For lounge music. */
        Lounge = 13,
        /** For the piano. */
        Piano = 14,
        /** For rhythm and blues. */
        RhythmAndBlues = 15,
        /** For rock. */
        Rock = 16,
        /** For speech. */
        SpokenWord = 17,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
