#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** State of the buffer of a playing medium. */
class VOROMULTIMEDIA_EXPORT BufferStatus {
    Q_GADGET
public:
    enum Type : int {
        /** Nothing is buffered. */
        Idle = 0,
        /** The buffer fills before playback continues. */
        Buffering = 1,
        /** The buffer holds enough to play. */
        Playing = 2,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
