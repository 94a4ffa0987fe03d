#pragma once

#include "ControllerService.h"
#include "Desktop.h"
#include "RoleService.h"

namespace voro::nowplaying {

/**
 * The now-playing role as a whole. There is one source at a time: the connection that holds the role, else a player of
 * another program found on the desktop. Controllers and the desktop watch it and command it.
 */
class NowPlayingService : private RoleService::Listener,
                          private ControllerService::Listener,
                          private Desktop::Listener {
public:
    explicit NowPlayingService(pps::Broker &broker);
    ~NowPlayingService() override;

    /** What is to serve the media player's control object; other services may share it. */
    pps::Service &connections() { return m_role; }

    /**
     * Carries out a command as a controller would write it ("msg::m_next", "msg::v_up"); for services of the daemon.
     */
    void command(std::string_view text);

private:
    void holderChanged() override;
    void holderAnswered() override;
    void holderRenamed() override;
    void holderReportedState(State state) override;
    void holderReportedMetadata(const Metadata &metadata) override;
    void holderChangedTrack() override;

    void commanded(const Command &command, const ControllerService::Answered &done) override;
    void controllerOpened() override { desktop(); }
    Audience::Kinds subscribing() override;
    void subscribersChanged() override;

    void desktopCommanded(const TrackCommand &command) override;
    void desktopShownChanged() override { updateWatched(); }
    void desktopPlayerChanged() override;
    void desktopPlayerUpdated(const PlayerChange &change) override;
    void desktopSearched() override { m_controllers.release(); }

    /** Null when its module is missing. */
    Desktop *desktop();
    void reportSource();
    void setState(State state);
    void reportPlayer(const Player &player);
    /** Reports the player's position when it has gone on. */
    void reportPosition();
    /** Runs the clock of the player's positions while it is needed. */
    void updateClock();
    /** The command for the source as it is now. */
    TrackCommand resolve(const TrackCommand &command) const;
    void commandSource(const TrackCommand &command, const ControllerService::Answered &done);
    bool isWatched() const;
    void updateWatched();

    RoleService m_role;
    ControllerService m_controllers;
    std::unique_ptr<Desktop> m_desktop;
    bool m_isDesktopTried = false;
    /** The state that the source published last. */
    State m_state = State::Stopped;
    /** Holders report their positions themselves; for a player of another program the service does. */
    QTimer m_clock;
    /** The player's position that was reported last. */
    quint32 m_reportedPosition = 0;
    /** Whether the holder knows that somebody watches. */
    bool m_wasWatched = false;
};

} // namespace voro::nowplaying
