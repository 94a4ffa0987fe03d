#include "NowPlayingService.h"

namespace voro::nowplaying {

namespace {

/** How often controllers learn how far a player is, in milliseconds. */
constexpr int PositionInterval = 1000;

} // namespace

NowPlayingService::NowPlayingService(pps::Broker &broker) : m_role(broker, *this), m_controllers(broker, *this)
{
    m_clock.setInterval(PositionInterval);
    QObject::connect(&m_clock, &QTimer::timeout, [this] { reportPosition(); });
}

NowPlayingService::~NowPlayingService() = default;

Desktop *NowPlayingService::desktop()
{
    if (!m_isDesktopTried) {
        m_isDesktopTried = true;
        m_desktop = loadDesktop(*this);
    }
    return m_desktop.get();
}

void NowPlayingService::command(std::string_view text)
{
    commanded(parseCommand(parseMessage(text)), [](const QString &) {});
}

// --- The holder

void NowPlayingService::holderChanged()
{
    const Holder *const holder = m_role.holder();
    if (holder && desktop()) {
        m_desktop->showHolder(holder->name, holder->process);
    } else if (m_desktop) {
        m_desktop->hideHolder();
    }
    reportSource();
}

void NowPlayingService::holderAnswered()
{
    m_wasWatched = isWatched();
    m_role.command(m_wasWatched ? "sendData" : "holdData");
}

void NowPlayingService::holderRenamed()
{
    if (m_desktop) {
        m_desktop->renameHolder(m_role.holder()->name);
    }
}

void NowPlayingService::holderReportedState(State state)
{
    setState(state);
    if (m_desktop) {
        m_desktop->showState(state);
    }
}

void NowPlayingService::holderReportedMetadata(const Metadata &metadata)
{
    m_controllers.reportMetadata(metadata);
    if (m_desktop) {
        m_desktop->showMetadata(metadata);
    }
}

void NowPlayingService::holderChangedTrack()
{
    m_controllers.reportTrackChange();
    if (m_desktop) {
        m_desktop->showTrackChange();
    }
}

// --- The source, whatever it is

void NowPlayingService::reportSource()
{
    const Holder *const holder = m_role.holder();
    const auto player = holder || !m_desktop ? std::nullopt : m_desktop->player();
    const int playerProcess = player ? player->process : 0;
    m_state = State::Stopped;
    m_controllers.reportSource(holder ? holder->process : playerProcess);
    if (player) {
        setState(player->state);
        reportPlayer(*player);
    }
    // Subscribers from whom messages were held back get them now.
    m_controllers.release();
    updateClock();
}

void NowPlayingService::setState(State state)
{
    m_state = state;
    m_controllers.reportState(state);
    updateClock();
}

void NowPlayingService::reportPlayer(const Player &player)
{
    m_reportedPosition = player.metadata.position;
    m_controllers.reportMetadata(player.metadata);
}

void NowPlayingService::reportPosition()
{
    const auto player = m_desktop->player();
    if (player && player->metadata.position != m_reportedPosition) {
        reportPlayer(*player);
    }
}

void NowPlayingService::updateClock()
{
    const bool isNeeded = !m_role.holder() && m_state == State::Playing && m_controllers.hasSubscribers();
    if (!isNeeded) {
        m_clock.stop();
    } else if (!m_clock.isActive()) {
        m_clock.start();
    }
}

TrackCommand NowPlayingService::resolve(const TrackCommand &command) const
{
    if (command.data == QVariant("playpause")) {
        return {m_state == State::Playing ? "pause" : "play"};
    }
    return command;
}

void NowPlayingService::commandSource(const TrackCommand &command, const ControllerService::Answered &done)
{
    if (m_role.holder()) {
        m_role.command(resolve(command).data);
        done({});
    } else if (desktop() && m_desktop->player()) {
        m_desktop->commandPlayer(resolve(command), done);
    } else {
        done("nothing is playing");
    }
}

// --- Controllers

void NowPlayingService::subscribersChanged()
{
    updateWatched();
    updateClock();
}

void NowPlayingService::commanded(const Command &command, const ControllerService::Answered &done)
{
    if (const auto *bad = std::get_if<BadCommand>(&command)) {
        done(bad->problem);
    } else if (const auto *track = std::get_if<TrackCommand>(&command)) {
        commandSource(*track, done);
    } else if (desktop()) {
        m_desktop->changeVolume(std::get<VolumeCommand>(command), done);
    } else {
        done("there is no sound server");
    }
}

Audience::Kinds NowPlayingService::subscribing()
{
    if (m_role.holder()) {
        return m_wasWatched ? 0 : Audience::bit(Audience::Update);
    }
    if (!m_desktop || m_desktop->isSearching()) {
        return m_desktop ? Audience::Lasting : 0;
    }
    if (const auto player = m_desktop->player()) {
        m_controllers.renewMetadata(player->metadata);
    }
    return 0;
}

bool NowPlayingService::isWatched() const
{
    return m_controllers.hasSubscribers() || (m_desktop && m_desktop->isShown());
}

void NowPlayingService::updateWatched()
{
    if (m_role.holder() && isWatched() != m_wasWatched) {
        m_wasWatched = !m_wasWatched;
        m_role.command(m_wasWatched ? "sendData" : "holdData");
    }
}

// --- The desktop

void NowPlayingService::desktopCommanded(const TrackCommand &command)
{
    m_role.command(resolve(command).data);
}

void NowPlayingService::desktopPlayerChanged()
{
    if (!m_role.holder()) {
        reportSource();
    }
}

void NowPlayingService::desktopPlayerUpdated(const PlayerChange &change)
{
    if (m_role.holder()) {
        return;
    }
    const Player player = *m_desktop->player();
    if (change.track) {
        m_controllers.reportTrackChange();
    }
    if (change.state) {
        setState(player.state);
    }
    // Its position is another one, whatever has changed.
    reportPlayer(player);
}

} // namespace voro::nowplaying
