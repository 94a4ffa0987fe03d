#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/** Priority of a now-playing connection. */
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
