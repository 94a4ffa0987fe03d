#include "Window.h"

#include "Arguments.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace voro {

QString windowFrom(const char *option, const QByteArray &text)
{
    bool isNumber = false;
    const unsigned window = text.toUInt(&isNumber, 0);
    if (!isNumber) {
        throw UsageError{QStringLiteral("%1: '%2' is not the number of a window")
                             .arg(QLatin1String(option), QString::fromLocal8Bit(text))};
    }
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(xcb_connect(nullptr, nullptr),
                                                                                  &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0) {
        throw UsageError{QStringLiteral("%1: no X server answers").arg(QLatin1String(option))};
    }
    const std::unique_ptr<xcb_get_window_attributes_reply_t, decltype(&std::free)> attributes(
        xcb_get_window_attributes_reply(connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr),
        &std::free);
    if (!attributes) {
        throw UsageError{QStringLiteral("%1: the X server has no window '%2'")
                             .arg(QLatin1String(option), QString::fromLocal8Bit(text))};
    }
    return QString::number(window);
}

} // namespace voro
