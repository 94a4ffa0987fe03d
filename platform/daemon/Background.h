#pragma once

#include <pps/Fd.h>

namespace voro {

/**
 * Puts the daemon into the background.
 *
 * The process that was started waits in enter() for the detached one and ends with status 0 when that is ready, else
 * with its status. Only the detached one returns from enter().
 */
class Background {
public:
    /** Must be called while the process has one thread. */
    void enter();
    /**
     * Notifies whoever started it that clients can connect: the service manager, if there is one, and in the background
     * the waiting process, whose terminal is let go of.
     */
    void ready();

private:
    pps::Fd m_waiting;
};

} // namespace voro
