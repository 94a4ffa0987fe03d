#include "Publication.h"

#include <utility>

namespace voro {

using multimedia::MediaError;
using multimedia::MediaPlayer;
using multimedia::MediaState;
using multimedia::NowPlayingConnection;
using multimedia::RepeatMode;
using multimedia::ShuffleMode;

Publication::Publication(MediaPlayer &player) : m_player(player), m_connection(QStringLiteral("voro play"))
{
    connectPlayer();
    connectCommands();
}

void Publication::connectPlayer()
{
    m_connection.setRepeatMode(m_player.repeatMode());
    connect(&m_player, &MediaPlayer::repeatModeChanged, &m_connection, &NowPlayingConnection::setRepeatMode);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::durationChanged), &m_connection,
            &NowPlayingConnection::setDuration);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::positionChanged), &m_connection,
            &NowPlayingConnection::setPosition);
}

void Publication::connectCommands()
{
    connect(&m_connection, &NowPlayingConnection::play, this, [this] { askUnless(MediaState::Started); });
    connect(&m_connection, &NowPlayingConnection::pause, this, [this] { askUnless(MediaState::Paused); });
    connect(&m_connection, &NowPlayingConnection::stop, this, &Publication::stopAsked);
    connect(&m_connection, &NowPlayingConnection::next, this, [this] { Q_EMIT keyAsked(Key::Next); });
    connect(&m_connection, &NowPlayingConnection::previous, this, [this] { Q_EMIT keyAsked(Key::Previous); });
    connect(&m_connection, &NowPlayingConnection::forward, this, [this] { Q_EMIT keyAsked(Key::Forward); });
    connect(&m_connection, &NowPlayingConnection::rewind, this, [this] { Q_EMIT keyAsked(Key::Back); });
    connect(&m_connection, &NowPlayingConnection::repeat, this, [this] { Q_EMIT repeatAsked(nextRepeatMode()); });
    connect(&m_connection, &NowPlayingConnection::repeatRequest, this, &Publication::repeatAsked);
    connect(&m_connection, &NowPlayingConnection::shuffle, this,
            [this] { Q_EMIT shuffleAsked(m_connection.shuffleMode() != ShuffleMode::All); });
    connect(&m_connection, &NowPlayingConnection::shuffleRequest, this,
            [this](ShuffleMode::Type mode) { Q_EMIT shuffleAsked(mode == ShuffleMode::All); });
    // Two at a time would be heard.
    connect(&m_connection, &NowPlayingConnection::revoked, this, [this] { askUnless(MediaState::Paused); });
}

void Publication::askUnless(MediaState::Type state)
{
    // The one key starts and pauses; it is not pressed when what it leads to is so already, nor to pause what has
    // stopped.
    const MediaState::Type present = m_player.mediaState();
    if (state == MediaState::Started ? present != state : present == MediaState::Started) {
        Q_EMIT keyAsked(Key::PlayPause);
    }
}

RepeatMode::Type Publication::nextRepeatMode() const
{
    switch (m_player.repeatMode()) {
    case RepeatMode::None:
        return RepeatMode::All;
    case RepeatMode::All:
        return RepeatMode::Track;
    default:
        return RepeatMode::None;
    }
}

void Publication::setState(MediaState::Type state)
{
    // The role is asked for when something is heard; a refusal means that somebody more important has it.
    if (state == MediaState::Started && !m_connection.isAcquired() && m_connection.acquire() != MediaError::None) {
        return;
    }
    m_connection.setMediaState(state);
}

void Publication::setTrack(unsigned number, QVariantMap metaData)
{
    if (std::exchange(m_track, number) != number && m_connection.isAcquired()) {
        m_connection.trackChange();
    }
    // A picture would make every report of a position a long one.
    metaData.remove(QStringLiteral("image"));
    if (metaData != m_metaData) {
        m_metaData = metaData;
        m_connection.setMetaData(metaData);
    }
}

void Publication::setNeighbours(bool hasNext, bool hasPrevious)
{
    m_connection.setNextEnabled(hasNext);
    m_connection.setPreviousEnabled(hasPrevious);
}

} // namespace voro
