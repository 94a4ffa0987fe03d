#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** How firmly a now-playing connection holds its role. */
class VOROMULTIMEDIA_EXPORT PriorityLevel {
    Q_GADGET
public:
    enum Type : int {
        /** Any other connection may take the role. */
        Low = 0,
        /** Only a connection of high priority may take the role. */
        High = 1,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
