#include "Devices.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLibrary>

namespace voro::doctor {

Devices defaultDevices()
{
    Devices devices;
    const QString module = QCoreApplication::applicationDirPath() + QLatin1String("/" VORO_TOOL_MODULES "/devices.so");
    if (const auto read = reinterpret_cast<ReadDevices *>(QLibrary::resolve(module, "voroDefaultDevices"))) {
        read(devices);
    }
    return devices;
}

} // namespace voro::doctor
