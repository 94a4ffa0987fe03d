#pragma once

#include "Player.h"

#include <QtCore/QObject>

#include <pps/broker/Broker.h>

#include <map>

namespace voro::sound {

/** The sound service of the daemon: plays the sounds that applications name. */
class SoundService : private pps::Service {
public:
    explicit SoundService(pps::Broker &broker);
    ~SoundService() override;
    SoundService(const SoundService &) = delete;
    SoundService &operator=(const SoundService &) = delete;

private:
    void clientOpened(pps::ClientId client, const pps::Peer &peer) override { m_processes[client] = peer.process; }
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override { m_processes.erase(client); }

    void report(std::string_view problem);
    void fail(pps::ClientId client, const std::string &command, std::string_view problem);

    pps::Broker &m_broker;
    std::map<pps::ClientId, pid_t> m_processes;
    /** Whether the last sound found no sound server. */
    bool m_isSilent = false;
    /** Brings the reports of the player's thread into its own thread. */
    QObject m_context;
    Player m_player;
};

} // namespace voro::sound
