#pragma once

#include "OwnElements.h"

#include <renderer/common/Reach.h>

/* A process's own view of the system: user, mount and network namespaces. All of it needs a process with one thread. */

namespace voro::renderer {

/**
 * Enters a user and a mount namespace with a root of its own, in which there is nothing but the system's files, to be
 * read, and the sockets of sound server and X servers. False, and nothing has changed, where the kernel refuses.
 */
bool enterNamespaces(const OwnElements &elements);

/** Leaves the network, after enterNamespaces(). */
bool leaveNetwork();

/** Leaves what a worker does not reach, after enterNamespaces() and a fork: other processes, the X servers. */
bool narrowNamespaces(Reach reach);

} // namespace voro::renderer
