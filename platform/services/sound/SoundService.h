#pragma once

#include "Player.h"

#include <QtCore/QObject>

#include <pps/broker/Broker.h>

namespace voro::sound {

/** The sound service of the daemon: plays the sounds that applications name. */
class SoundService : private pps::Service {
public:
    explicit SoundService(pps::Broker &broker);
    ~SoundService() override;
    SoundService(const SoundService &) = delete;
    SoundService &operator=(const SoundService &) = delete;

private:
    void clientOpened(pps::ClientId, const pps::Peer &) override {}
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId) override {}

    void report(std::string_view problem);
    void fail(pps::ClientId client, const std::string &command, std::string_view problem);

    pps::Broker &m_broker;
    /** Whether the last sound found no sound server. */
    bool m_isSilent = false;
    /** Brings the reports of the player's thread into its own thread. */
    QObject m_context;
    Player m_player;
};

} // namespace voro::sound
