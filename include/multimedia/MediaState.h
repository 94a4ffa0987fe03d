#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** State of a player or a recorder. */
class VOROMULTIMEDIA_EXPORT MediaState {
    Q_GADGET
public:
    enum Type : int {
        /** No medium is attached. */
        Unprepared = 0,
        /** Outputs and medium are attached. */
        Prepared = 1,
        /** Playing or recording. */
        Started = 2,
        /** Paused at the present position. */
        Paused = 3,
        /** Stopped by command, at the end or by an error. The medium is still attached. */
        Stopped = 4,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
