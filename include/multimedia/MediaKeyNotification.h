#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** When a press of a media key is reported. */
class VOROMULTIMEDIA_EXPORT MediaKeyNotification {
    Q_GADGET
public:
    enum Type : int {
        /** A short press when the key is released, however long it was held. */
        Clicked = 0,
        /** A short press when the key is released before the threshold, and longer ones as they happen. */
        Threshold = 1,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
