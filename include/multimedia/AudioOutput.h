#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** Where a player's sound goes. */
class VOROMULTIMEDIA_EXPORT AudioOutput {
    Q_GADGET
public:
    enum Type : int {
        /** Nowhere. */
        None = 0,
        /** To the sound server's default device. */
        Default = 1,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
