#pragma once

#include <chrono>
#include <functional>

namespace voro::pps {

/** The reaction to a lock that another process holds. */
enum class WhileLocked {
    /** Tries again a little later. */
    Retry,
    /** The same, and the time limit starts anew. */
    RetryAnew,
    GiveUp,
};

/**
 * Locks the open file for this process alone. While another process holds the lock, `whileLocked` is called before each
 * further attempt. Returns 0, ECANCELED when that gives up, ETIMEDOUT at the limit, or another errno number.
 */
int lockFile(int file, std::chrono::milliseconds limit, const std::function<WhileLocked()> &whileLocked);

} // namespace voro::pps
