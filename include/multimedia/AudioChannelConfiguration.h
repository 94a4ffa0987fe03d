#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** Channels of a recording. */
class VOROMULTIMEDIA_EXPORT AudioChannelConfiguration {
    Q_GADGET
public:
    enum Type : int {
        /** As the input device has them. */
        Default = 0,
        /** One channel. */
        Mono = 1,
        /** Two channels. */
        Stereo = 2,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
