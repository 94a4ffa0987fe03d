#pragma once

#include <QtCore/QString>

namespace voro::doctor {

/** Ends the daemon in order, if one runs, and has another one started. Returns why not; empty when it answers. */
QString restartDaemon();

} // namespace voro::doctor
