#include "WindowCheck.h"

#include <xcb/xcb.h>

#include <memory>

namespace voro::doctor {

std::vector<Finding> WindowCheck::examine() const
{
    const QString remedy = QStringLiteral("run it in a desktop session, or set DISPLAY");
    const QString display = qEnvironmentVariable("DISPLAY");
    const bool hasWayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (display.isEmpty() && hasWayland) {
        return {{Health::Limited, QStringLiteral("Wayland without X11: films play in items of QML, not in X11 windows"),
                 QStringLiteral("start Xwayland for programs that draw into windows")}};
    }
    if (display.isEmpty()) {
        return {{Health::Missing, QStringLiteral("there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set"),
                 remedy}};
    }
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(xcb_connect(nullptr, nullptr),
                                                                                  &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0) {
        return {{Health::Missing, QStringLiteral("the X server %1 does not answer").arg(display), remedy}};
    }
    return {{Health::Good, QStringLiteral("the X server %1 answers").arg(display)}};
}

} // namespace voro::doctor
