#pragma once

#include <string>

namespace voro {

/**
 * Has the user's service manager start the daemon for the folder, if there is one: in a cgroup of its own and with
 * nothing of the application that needs it. By the installed socket unit when that serves the folder and the
 * environment has no settings of ours, else as a transient unit of `program`. False when nothing came of it.
 */
bool startByManager(const std::string &program, const std::string &folder);

} // namespace voro
