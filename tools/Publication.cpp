#include "Publication.h"

#include <utility>

namespace voro {

using multimedia::MediaError;
using multimedia::MediaPlayer;
using multimedia::MediaState;
using multimedia::NowPlayingConnection;

Publication::Publication(MediaPlayer &player, std::function<void(Key)> ask, QObject *parent)
    : QObject(parent),
      m_player(player),
      m_ask(std::move(ask)),
      m_connection(QStringLiteral("voro play"))
{
    connectPlayer();
    connectCommands();
}

void Publication::connectPlayer()
{
    connect(&m_player, &MediaPlayer::mediaStateChanged, this, &Publication::publishState);
    connect(&m_player, &MediaPlayer::metaDataChanged, &m_connection, [this](QVariantMap metaData) {
        // A picture would make every report of a position a long one.
        metaData.remove(QStringLiteral("image"));
        m_connection.setMetaData(metaData);
    });
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::durationChanged), &m_connection,
            &NowPlayingConnection::setDuration);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::positionChanged), &m_connection,
            &NowPlayingConnection::setPosition);
}

void Publication::publishState(MediaState::Type state)
{
    // The role is asked for when something is heard; a refusal means that somebody more important has it.
    if (state == MediaState::Started && !m_connection.isAcquired() && m_connection.acquire() != MediaError::None) {
        return;
    }
    m_connection.setMediaState(state);
}

void Publication::connectCommands()
{
    connect(&m_connection, &NowPlayingConnection::play, this, [this] { askUnless(MediaState::Started); });
    connect(&m_connection, &NowPlayingConnection::pause, this, [this] { askUnless(MediaState::Paused); });
    connect(&m_connection, &NowPlayingConnection::stop, this, [this] { askUnless(MediaState::Paused); });
    connect(&m_connection, &NowPlayingConnection::next, this, [this] { m_ask(Key::Next); });
    connect(&m_connection, &NowPlayingConnection::previous, this, [this] { m_ask(Key::Previous); });
    connect(&m_connection, &NowPlayingConnection::forward, this, [this] { m_ask(Key::Forward); });
    connect(&m_connection, &NowPlayingConnection::rewind, this, [this] { m_ask(Key::Back); });
}

/** The one key starts and pauses; it is not pressed when what it leads to is so already. */
void Publication::askUnless(MediaState::Type state)
{
    if (m_player.mediaState() != state) {
        m_ask(Key::PlayPause);
    }
}

void Publication::setNeighbours(bool hasNext, bool hasPrevious)
{
    m_connection.setNextEnabled(hasNext);
    m_connection.setPreviousEnabled(hasPrevious);
}

} // namespace voro
