#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** The hardware media keys. */
class VOROMULTIMEDIA_EXPORT MediaKey {
    Q_GADGET
public:
    enum Type : int {
        /** No key. */
        None = 0,
        /** Fast forward. */
        FastForward = 1,
        /** Pause. */
        Pause = 2,
        /** Play. */
        Play = 3,
        /** Play and pause on one key. */
        PlayPause = 4,
        /** Rewind. */
        Rewind = 5,
        /** Stop. */
        Stop = 6,
        /** Softer. */
        VolumeDown = 7,
        /** Louder. */
        VolumeUp = 8,
        /** Previous track. */
        Previous = 9,
        /** Next track. */
        Next = 10,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
