#pragma once

#include <cstdint>

/*
 * How the daemon gets workers from a nursery. The nursery is two processes, one with the network and one without, with
 * a socket to the daemon each. A request comes with the worker's sockets in the order of their numbers; the answer
 * brings the process's pidfd. Unasked, with the number 0, the nursery tells of its own second process in the same way.
 */

namespace voro::renderer {

/** The sockets that a nursery is started with. */
inline constexpr int NetworkNurserySocket = 3;
inline constexpr int LocalNurserySocket = 4;

/** The sockets of a new worker: WorkerSocket, WorkerFilesSocket and WorkerMediaSocket. */
inline constexpr int WorkerSockets = 3;

struct BirthRequest {
    /** From 1; 0 asks for no worker but that films be expected. */
    int64_t id = 0;
    int64_t hasWindows = 0;
};

struct BirthAnswer {
    int64_t id = 0;
    /** 0 when there is none. */
    int64_t process = 0;
};

} // namespace voro::renderer
