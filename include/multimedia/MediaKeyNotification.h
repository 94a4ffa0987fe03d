#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** When a short press of a media key is reported. */
class VOROMULTIMEDIA_EXPORT MediaKeyNotification {
    Q_GADGET
public:
    enum Type : int {
        /** On release, after any time. */
        Clicked = 0,
        /** On release before the threshold. Longer presses are reported at the threshold. */
        Threshold = 1,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
