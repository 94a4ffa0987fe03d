#pragma once

#include <pps/broker/Broker.h>

#include <string>
#include <vector>

namespace voro {

/**
 * Serves one control object for several services. Each of them is notified of every client and gets every message,
 * and ignores the messages that are not its own. They must outlive the object.
 */
class SharedControl : private pps::Service {
public:
    SharedControl(pps::Broker &broker, std::string path) : m_broker(broker), m_path(std::move(path))
    {
        m_broker.serve(m_path, this);
    }
    ~SharedControl() override { m_broker.unserve(m_path); }
    SharedControl(const SharedControl &) = delete;
    SharedControl &operator=(const SharedControl &) = delete;

    void add(pps::Service &service) { m_services.push_back(&service); }

private:
    void clientOpened(pps::ClientId client, const pps::Peer &peer) override
    {
        for (pps::Service *service : m_services) {
            service->clientOpened(client, peer);
        }
    }
    void clientMessage(pps::ClientId client, std::string_view text) override
    {
        for (pps::Service *service : m_services) {
            service->clientMessage(client, text);
        }
    }
    void clientClosed(pps::ClientId client) override
    {
        for (pps::Service *service : m_services) {
            service->clientClosed(client);
        }
    }
    void clientHasRead(pps::ClientId client) override
    {
        for (pps::Service *service : m_services) {
            service->clientHasRead(client);
        }
    }

    pps::Broker &m_broker;
    std::string m_path;
    std::vector<pps::Service *> m_services;
};

} // namespace voro
