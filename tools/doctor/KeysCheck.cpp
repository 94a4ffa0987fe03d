#include "KeysCheck.h"

#include <QtCore/QDir>

#include <algorithm>

namespace voro::doctor {

std::vector<Finding> KeysCheck::examine() const
{
    const QFileInfoList devices =
        QDir(QStringLiteral("/dev/input")).entryInfoList({QStringLiteral("event*")}, QDir::System);
    const auto readable =
        std::count_if(devices.begin(), devices.end(), [](const QFileInfo &device) { return device.isReadable(); });
    if (devices.isEmpty()) {
        return {{Health::Limited, QStringLiteral("there is no input device that media keys could come from")}};
    }
    const QString text =
        QStringLiteral("%1 of %2 input devices under /dev/input can be read").arg(readable).arg(devices.size());
    if (readable == 0) {
        return {{Health::Limited, text,
                 QStringLiteral("usermod -aG input %1, then log in again").arg(qEnvironmentVariable("USER", "USER"))}};
    }
    return {{Health::Good, text}};
}

} // namespace voro::doctor
