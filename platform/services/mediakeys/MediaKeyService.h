#pragma once

#include "InputDevices.h"
#include "PressControl.h"
#include "Presses.h"

#include <QtCore/QTimer>

#include <pps/broker/Broker.h>

#include <functional>
#include <map>
#include <optional>
#include <set>

namespace voro::mediakeys {

/** Whether keys of devices that nobody registered are acted upon (VORO_MEDIA_KEYS). */
enum class Mode {
    /** Unless a desktop session does that. */
    Auto,
    All,
    /** Never. */
    Registered,
};
/** The mode that the environment names; an unknown name is logged and means `auto`. */
Mode modeFromEnvironment();

/**
 * The media key service of the daemon: notifies applications of presses of the keys that they
 * registered, and has the work of all other keys done.
 *
 * Clients of the media player's control object register; clients of a control object of the service's own press keys.
 */
class MediaKeyService : public pps::Service,
                        private KeyListener {
public:
    /** Does what a controller would write. */
    using WriteMessage = std::function<void(std::string_view message)>;

    explicit MediaKeyService(pps::Broker &broker, Mode mode = modeFromEnvironment(),
                             const std::string &deviceFolder = "/dev/input");
    MediaKeyService(const MediaKeyService &) = delete;
    MediaKeyService &operator=(const MediaKeyService &) = delete;

    /** Who does the work of keys that nobody registered; until it is set nobody does. */
    void setCommand(WriteMessage command) { m_command = std::move(command); }

    // A client of the media player's control object.
    void clientOpened(pps::ClientId client, const pps::Peer &peer) override;
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override;

private:
    struct Client {
        pid_t process = 0;
        std::set<Registration> registrations;
        /** The messages that made them. */
        std::string messages;

        bool hasRegistered(Key key) const;
        bool wants(Presses::Event event, Key key) const;
    };

    void keyPressed(SourceId source, Key key, Time at) override;
    void keyReleased(SourceId source, Key key, Time at) override;
    void sourceGone(SourceId source) override;

    void report(Presses::Event event, Key key, const Owners &owners);
    bool isActedUpon(SourceId source) const;
    /** Does what is due. */
    void advance();
    /** Starts the timer for the next threshold or release. */
    void armTimer();

    pps::Broker &m_broker;
    const Mode m_mode;
    WriteMessage m_command;
    std::map<pps::ClientId, Client> m_clients;
    Presses m_presses;
    PressControl m_control;
    std::optional<InputDevices> m_devices;
    QTimer m_timer;
};

} // namespace voro::mediakeys
