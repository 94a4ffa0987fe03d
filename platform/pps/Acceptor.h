#pragma once

#include "Fd.h"

namespace voro::pps {

/** Accepts connections, also when the process has no descriptor left. */
class Acceptor {
public:
    Acceptor();

    /**
     * Takes the next connection. False when none waits. The socket is invalid when a connection was closed for want of
     * a descriptor: left alone, it would make its listener readable for ever.
     */
    bool accept(int listener, Fd &socket);

private:
    /** Given up to accept a connection when there is no other descriptor left. */
    Fd m_spare;
};

} // namespace voro::pps
