#include "HolderModel.h"

#include "DesktopEntry.h"
#include "Mpris.h"

#include <cmath>

namespace voro::nowplaying {

namespace {

/** A report that differs by more than this from where the position should be is a jump. In milliseconds. */
constexpr qint64 Jump = 1000;

} // namespace

void HolderModel::setHolder(const QString &name, qint64 process)
{
    Q_EMIT leaving();
    m_hasHolder = true;
    m_name = name;
    m_process = process;
    m_state = State::Stopped;
    m_metadata = {};
    m_position = {};
    m_track = 0;
    findDesktopEntry();
    Q_EMIT appeared();
}

void HolderModel::findDesktopEntry()
{
    m_desktopEntry.clear();
    const auto entry = std::make_shared<QString>();
    const auto read = [entry, process = m_process] { *entry = nowplaying::desktopEntry(process); };
    m_desktopEntryCall.start(read, [this, entry] {
        m_desktopEntry = *entry;
        if (!m_desktopEntry.isEmpty()) {
            Q_EMIT desktopEntryFound(m_desktopEntry);
        }
    });
}

void HolderModel::rename(const QString &name)
{
    Q_EMIT leaving();
    m_name = name;
    Q_EMIT appeared();
}

void HolderModel::clear()
{
    Q_EMIT leaving();
    m_hasHolder = false;
}

void HolderModel::setState(State state)
{
    m_state = state;
    m_position.setRate(state == State::Playing ? 1 : 0);
    Q_EMIT playerPropertiesChanged();
}

void HolderModel::setMetadata(const Metadata &metadata)
{
    const bool isOtherTrack = m_track == 0 || metadata.title != m_metadata.title || metadata.artist != m_metadata.artist
                              || metadata.album != m_metadata.album;
    const bool isJump = std::abs(static_cast<qint64>(metadata.position) - m_position.now()) > Jump;
    if (isOtherTrack) {
        m_track = ++m_lastTrack;
    }
    m_metadata = metadata;
    m_position.setDuration(metadata.duration);
    m_position.set(metadata.position);
    Q_EMIT playerPropertiesChanged();
    if (isJump) {
        Q_EMIT seeked();
    }
}

void HolderModel::setVolume(double volume)
{
    m_volume = volume;
    Q_EMIT playerPropertiesChanged();
}

void HolderModel::changeTrack()
{
    m_track = ++m_lastTrack;
    Q_EMIT playerPropertiesChanged();
}

QVariantMap HolderModel::rootProperties() const
{
    QVariantMap properties{
        {"HasTrackList", false},
        {"Identity", m_name},
        {"SupportedUriSchemes", QStringList()},
        {"SupportedMimeTypes", QStringList()},
    };
    if (!m_desktopEntry.isEmpty()) {
        properties.insert(mpris::DesktopEntry, m_desktopEntry);
    }
    return properties;
}

QVariantMap HolderModel::playerProperties() const
{
    QVariantMap properties{
        {"PlaybackStatus", mpris::fromState(m_state)},
        {mpris::Rate, 1.0},
        {"Metadata", mpris::fromMetadata(m_metadata, m_track)},
        {mpris::Volume, m_volume},
        {"MinimumRate", 1.0},
        {"MaximumRate", 1.0},
        {"CanGoNext", m_metadata.nextEnabled},
        {"CanGoPrevious", m_metadata.previousEnabled},
        {"CanPlay", true},
        {"CanPause", true},
        {"CanSeek", false},
        {"CanControl", true},
    };
    // A holder that does not report a mode has none.
    if (!m_metadata.repeatMode.isEmpty()) {
        properties.insert(mpris::LoopStatus, mpris::fromRepeatMode(m_metadata.repeatMode));
    }
    if (!m_metadata.shuffleMode.isEmpty()) {
        properties.insert(mpris::Shuffle, m_metadata.shuffleMode == "all");
    }
    return properties;
}

} // namespace voro::nowplaying
