#pragma once

#include "KeySource.h"

#include <pps/broker/Broker.h>

#include <map>
#include <optional>
#include <unordered_map>

namespace voro::mediakeys {

/**
 * The control object by which clients press keys: "press" with the name of a `key`, and in `ms` how long it is held.
 * The answer comes when the key is released. Each press is a source of its own, which goes with its client. A client
 * holds down at most 16 keys at a time.
 */
class PressControl : private pps::Service {
public:
    PressControl(pps::Broker &broker, KeyListener &listener);
    ~PressControl() override;
    PressControl(const PressControl &) = delete;
    PressControl &operator=(const PressControl &) = delete;

    /** Releases the keys whose time has come. */
    void advance(Time now);
    /** When the next key is to be released. */
    std::optional<Time> next() const;

private:
    struct Press {
        pps::ClientId client;
        SourceId source;
        Key key;
    };

    void clientOpened(pps::ClientId, const pps::Peer &) override {}
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override;

    void press(pps::ClientId client, Key key, std::chrono::milliseconds length);
    void release(const Press &press, Time at);

    pps::Broker &m_broker;
    KeyListener &m_listener;
    /** What is down, by the time of its release. */
    std::multimap<Time, Press> m_presses;
    /** How many of them are of each client. */
    std::unordered_map<pps::ClientId, int> m_counts;
    uint64_t m_lastNumber = 0;
};

} // namespace voro::mediakeys
