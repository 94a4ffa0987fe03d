#pragma once

namespace voro {

/**
 * Undoes what a daemon inherits from the application that started it, as far as the kernel lets it: nice value and
 * scheduling, the processors that it may run on, lowered limits, the umask, the memory killer's preference. The
 * environment was chosen by whoever started the process. A cgroup is left through the service manager only.
 */
void forgetStarter();

} // namespace voro
