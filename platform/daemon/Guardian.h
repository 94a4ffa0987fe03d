#pragma once

namespace voro {

/**
 * Forks, and returns in the child, which is the daemon from then on. The process that was started stays as its parent
 * and only waits: it passes on the signals that end a daemon, ends a daemon that stays stopped, because everybody who
 * asks it for something waits, and ends as the daemon does. The daemon ends with it. When it cannot be forked it is
 * its own.
 *
 * Must be called while the process has one thread. `isDetached`: nothing is said at the terminal any more.
 */
void guard(bool isDetached);

} // namespace voro
