#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** Whether an object plays or records. */
class VOROMULTIMEDIA_EXPORT DeviceMode {
    Q_GADGET
public:
    enum Type : int {
        /** It plays. */
        Playback = 0,
        /** It records. */
        Capture = 1,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
