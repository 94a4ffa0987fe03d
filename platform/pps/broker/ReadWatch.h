#pragma once

#include "Client.h"

#include <unordered_map>
#include <vector>

namespace voro::pps {

/** Waits for clients that are behind to read what was sent to them. */
class ReadWatch {
public:
    ReadWatch();

    /** Readable when takeRead() may have something to report. */
    int fd() const { return m_epoll.get(); }
    void add(const Client &client);
    void remove(const Client &client);
    /** The clients that have read everything; they are not watched any more. */
    std::vector<ClientId> takeRead();

private:
    Fd m_epoll;
    std::unordered_map<ClientId, const Client *> m_clients;
};

} // namespace voro::pps
