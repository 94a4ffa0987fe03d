#pragma once

#include <QtDBus/QDBusConnection>

namespace application {

/** The session bus; not connected where there is none, which is not started either. */
QDBusConnection sessionBus();

} // namespace application
