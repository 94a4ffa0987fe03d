#include "ReadWatch.h"

#include <sys/epoll.h>

namespace voro::pps {

ReadWatch::ReadWatch() : m_epoll(epoll_create1(EPOLL_CLOEXEC)) {}

void ReadWatch::add(const Client &client)
{
    if (m_clients.emplace(client.id, &client).second) {
        epoll_event event{};
        // Edge-triggered: the kernel then reports every packet that leaves the socket.
        event.events = EPOLLOUT | EPOLLET;
        event.data.u64 = client.id;
        epoll_ctl(fd(), EPOLL_CTL_ADD, client.fd(), &event);
    }
}

void ReadWatch::remove(const Client &client)
{
    if (m_clients.erase(client.id) > 0) {
        epoll_ctl(fd(), EPOLL_CTL_DEL, client.fd(), nullptr);
    }
}

std::vector<ClientId> ReadWatch::takeRead()
{
    constexpr int MaximumEvents = 64;
    epoll_event events[MaximumEvents];
    const int ready = epoll_wait(fd(), events, MaximumEvents, 0);
    std::vector<ClientId> clients;
    for (int i = 0; i < ready; ++i) {
        const Client &client = *m_clients.at(events[i].data.u64);
        if (client.hasReadAll()) {
            clients.push_back(client.id);
            remove(client);
        }
    }
    return clients;
}

} // namespace voro::pps
