#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** Repeat mode of a player or a source. */
class VOROMULTIMEDIA_EXPORT RepeatMode {
    Q_GADGET
public:
    enum Type : int {
        /** No repeat: playback ends after the last track. */
        None = 0,
        /** The current track. */
        Track = 1,
        /** All tracks. */
        All = 2,
        /** The source cannot repeat; never accepted by a player. */
        Unsupported = 3,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
