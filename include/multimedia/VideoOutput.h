#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** Where a player's video goes. */
class VOROMULTIMEDIA_EXPORT VideoOutput {
    Q_GADGET
public:
    enum Type : int {
        /** Nowhere. */
        None = 0,
        /** To a window on the primary display. */
        PrimaryDisplay = 1,
        /** To a window on the secondary display. */
        SecondaryDisplay = 2,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
