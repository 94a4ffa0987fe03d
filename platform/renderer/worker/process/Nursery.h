#pragma once

#include "Confinement.h"

#include <renderer/common/Birth.h>
#include <renderer/common/Reach.h>

#include <optional>

namespace voro::renderer {

/**
 * Forks workers from a process in which everything is loaded that they use: pages that nobody writes stand in memory
 * once. It is two processes, of which one has no network, with one thread and a socket to the daemon each.
 */
class Nursery {
public:
    explicit Nursery(Confinement &confinement) : m_confinement(confinement) {}

    /**
     * Returns in each worker, which has its sockets, with its reach; in the nursery itself when the daemon has gone,
     * when plugins have changed on the disk, or when threads are in the way of forking.
     */
    std::optional<Reach> run();

private:
    std::optional<Reach> serve(int socket, bool hasNetwork);

    Confinement &m_confinement;
};

} // namespace voro::renderer
