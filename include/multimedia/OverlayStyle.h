#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** How the device shows the now-playing source. */
class VOROMULTIMEDIA_EXPORT OverlayStyle {
    Q_GADGET
public:
    enum Type : int {
        /** Without artwork and extras. */
        Plain = 0,
        /** With artwork and extras. */
        Fancy = 1,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
