#include "HolderModel.h"
#include "MprisAdaptor.h"
#include "Players.h"
#include "SessionBus.h"
#include "SinkVolume.h"

namespace voro::nowplaying {

namespace {

/** How long players that run already are waited for, in milliseconds. */
constexpr int SearchLimit = 200;

class Module : public QObject,
               public Desktop {
public:
    explicit Module(Listener &listener);
    ~Module() override = default;

    void showHolder(const QString &name, qint64 process) override;
    void renameHolder(const QString &name) override { m_holder.rename(name); }
    void hideHolder() override { m_holder.clear(); }
    void showState(State state) override { m_holder.setState(state); }
    void showMetadata(const Metadata &metadata) override { m_holder.setMetadata(metadata); }
    void showTrackChange() override { m_holder.changeTrack(); }
    bool isShown() const override { return m_adaptor.isShown(); }

    std::optional<Player> player() const override;
    bool isSearching() const override { return m_search.isActive(); }
    void commandPlayer(const TrackCommand &command, const Answered &done) override { m_players.command(command, done); }

    void changeVolume(const VolumeCommand &command, const Answered &done) override { m_volume.change(command, done); }

private:
    void endSearch();

    Listener &m_listener;
    SinkVolume m_volume;
    SessionBus m_bus;
    HolderModel m_holder;
    MprisAdaptor m_adaptor{m_holder};
    Players m_players;
    /** Runs until the players that were there at the beginning are known. */
    QTimer m_search;
};

Module::Module(Listener &listener) : m_listener(listener)
{
    connect(&m_volume, &SinkVolume::changed, this, [this] { m_holder.setVolume(m_volume.volume()); });
    connect(&m_bus, &SessionBus::connected, this, [this] {
        m_adaptor.attach(m_bus.connection());
        m_players.attach(m_bus.connection());
        m_volume.watch();
    });
    connect(&m_bus, &SessionBus::disconnected, this, [this] {
        m_adaptor.detach();
        m_players.detach();
    });
    connect(&m_bus, &SessionBus::settled, this, [this] {
        if (!m_bus.isConnected()) {
            endSearch();
        }
    });
    connect(&m_adaptor, &MprisAdaptor::shownChanged, this, [this] { m_listener.desktopShownChanged(); });
    connect(&m_adaptor, &MprisAdaptor::commanded, this,
            [this](const TrackCommand &command) { m_listener.desktopCommanded(command); });
    connect(&m_adaptor, &MprisAdaptor::volumeCommanded, this,
            [this](const VolumeCommand &command, const Answered &done) { m_volume.change(command, done); });
    connect(&m_players, &Players::currentChanged, this, [this] { m_listener.desktopPlayerChanged(); });
    connect(&m_players, &Players::currentUpdated, this,
            [this](const PlayerChange &change) { m_listener.desktopPlayerUpdated(change); });
    connect(&m_players, &Players::listed, this, &Module::endSearch);
    connect(&m_search, &QTimer::timeout, this, &Module::endSearch);
    if (m_bus.isConnecting()) {
        m_search.start(SearchLimit);
    }
}

void Module::endSearch()
{
    if (m_search.isActive()) {
        m_search.stop();
        m_listener.desktopSearched();
    }
}

void Module::showHolder(const QString &name, qint64 process)
{
    if (m_bus.isConnected()) {
        m_volume.watch();
    }
    m_holder.setHolder(name, process);
}

std::optional<Player> Module::player() const
{
    const RemotePlayer *const player = m_players.current();
    return player ? std::optional(player->player()) : std::nullopt;
}

} // namespace

} // namespace voro::nowplaying

extern "C" Q_DECL_EXPORT voro::nowplaying::Desktop *voroMakeDesktop(voro::nowplaying::Desktop::Listener &listener)
{
    return new voro::nowplaying::Module(listener);
}
