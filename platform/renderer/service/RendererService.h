#pragma once

#include "Context.h"
#include "WorkerPool.h"

#include <pps/broker/Broker.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace voro::renderer {

/** The renderer service of the daemon: makes contexts for applications, and ends them with their applications. */
class RendererService : private pps::Service {
public:
    explicit RendererService(pps::Broker &broker);
    ~RendererService() override;
    /**
     * Lets items of applications show pictures, by a socket in the daemon's runtime folder. False, and errno tells
     * why, when that cannot be made.
     */
    bool listen(const std::string &folder) { return m_workers.frameQueues().listen(folder); }
    /** Whether no context has a medium. */
    bool isIdle() const;
    /** Has a function called when a context has let go of its medium. */
    void onIdle(std::function<void()> callback) { m_onIdle = std::move(callback); }
    RendererService(const RendererService &) = delete;
    RendererService &operator=(const RendererService &) = delete;

private:
    struct Owned {
        pps::Accounts::Charge charge;
        pps::ClientId owner;
        std::string name;
        std::unique_ptr<Context> context;
    };

    void clientOpened(pps::ClientId client, const pps::Peer &peer) override { m_clients[client] = peer.process; }
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override;

    Result create(pps::ClientId client, const pps::Message &message, std::string &line);
    void contextsEnded();
    void contextIdle() const;
    Result destroy(pps::ClientId client, const std::string &name);

    pps::Broker &m_broker;
    WorkerPool m_workers;
    Parking m_parking;
    std::function<void()> m_onIdle;
    std::map<pps::ClientId, pid_t> m_clients;
    /** By their folders: two names may have one. */
    std::map<std::string, Owned> m_contexts;
};

} // namespace voro::renderer
