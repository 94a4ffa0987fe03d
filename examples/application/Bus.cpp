#include "Bus.h"

#include <QtCore/QFileInfo>

namespace application {

QDBusConnection sessionBus()
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const bool isThere = qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")
                             ? !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")
                             : !folder.isEmpty() && QFileInfo::exists(folder + QStringLiteral("/bus"));
    return isThere ? QDBusConnection::sessionBus() : QDBusConnection(QString());
}

} // namespace application
