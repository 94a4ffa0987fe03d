#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** Order in which a source plays its tracks. Here `Unsupported` is the first value. */
class VOROMULTIMEDIA_EXPORT ShuffleMode {
    Q_GADGET
public:
    enum Type : int {
        /** The source cannot shuffle. */
        Unsupported = 0,
        /** In order. */
        Off = 1,
        /** In a random order. */
        All = 2,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
