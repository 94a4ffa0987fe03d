#include "Playback.h"

#include "Output.h"
#include "SignalPrinter.h"
#include "StopSignals.h"

#include <multimedia/MetaData.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace voro {

using multimedia::BufferStatus;
using multimedia::MediaError;
using multimedia::MediaPlayer;
using multimedia::MediaState;
using multimedia::RepeatMode;
using multimedia::VideoOutput;

namespace {

constexpr int SeekStep = 5000;
constexpr double VolumeStep = 0.05;

/** Runs commands until one fails; its error is the result. */
MediaError::Type inTurn(std::initializer_list<std::function<MediaError::Type()>> commands)
{
    for (const auto &command : commands)
        if (const auto error = command(); error != MediaError::None)
            return error;
    return MediaError::None;
}

} // namespace

Playback::Playback(PlaybackSettings settings)
    : Session("play"),
      m_settings(std::move(settings)),
      m_display(m_settings.json ? Display::createSilent() : Display::create())
{
    connectPlayer();
}

void Playback::connectPlayer()
{
    if (m_settings.json)
        new SignalPrinter(&m_player, voro::print, this);
    connect(&m_player, &MediaPlayer::metaDataChanged, this, &Playback::refresh);
    connect(&m_player, &MediaPlayer::mediaStateChanged, this, &Playback::refresh);
    connect(&m_player, &MediaPlayer::bufferStatusChanged, this, &Playback::refresh);
    connect(&m_player, &MediaPlayer::volumeChanged, this, &Playback::refresh);
    connect(&m_player, &MediaPlayer::speedChanged, this, &Playback::refresh);
    connect(&m_player, &MediaPlayer::closedCaptionEnabledChanged, this, &Playback::refresh);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::trackChanged), this, &Playback::refresh);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::trackCountChanged), this, &Playback::refresh);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::durationChanged), this, &Playback::refresh);
    connect(&m_player, qOverload<unsigned>(&MediaPlayer::positionChanged), this, [this] {
        m_sought.reset();
        refresh();
    });
    connect(&m_player, &MediaPlayer::buffering, this, [this](double fraction) {
        m_buffering = fraction;
        refresh();
    });
    // What follows an end uses the player, which is still at its report here: it follows from the event loop.
    connect(&m_player, &MediaPlayer::playbackCompleted, this, &Playback::onEnd, Qt::QueuedConnection);
    connect(&m_player, qOverload<MediaError::Type, unsigned>(&MediaPlayer::error), this, &Playback::onError,
            Qt::QueuedConnection);
}

bool Playback::begin()
{
    if (const auto error = log().run([this] { return applySettings(); }); error != MediaError::None) {
        fail(enumeratorName(error));
        return false;
    }
    if (m_settings.isPublished)
        m_publication = std::make_unique<Publication>(
            m_player, [this](Key key) { onKey(key); }, nullptr);
    return beginWith(0);
}

MediaError::Type Playback::applySettings()
{
    // A single medium is repeated by the player, several ones by this program.
    const bool repeatsHere = m_settings.repeatMode == RepeatMode::All && m_settings.media.size() > 1;
    if (!m_settings.windowId.isEmpty()) {
        m_player.setWindowId(m_settings.windowId);
        if (m_settings.captions)
            m_player.setClosedCaptionWindowId(m_settings.windowId);
    }
    return inTurn({
        [&] { return m_player.setVolume(m_settings.volume); },
        [&] { return m_player.setEqualizerPreset(m_settings.equalizerPreset); },
        [&] { return m_player.setRepeatMode(repeatsHere ? RepeatMode::None : m_settings.repeatMode); },
        [&] {
            return m_settings.windowId.isEmpty() ? MediaError::None
                                                 : m_player.setVideoOutput(VideoOutput::PrimaryDisplay);
        },
    });
}

MediaError::Type Playback::playMedium(const Medium &medium, bool isFirst)
{
    const StopSignals::AtOnce atOnce;
    return inTurn({
        [&] { return m_player.setSourceUrl(medium.url); },
        [&] { return m_player.prepare(); },
        [&] {
            return m_settings.captions ? m_player.setClosedCaptionUrl(1, m_settings.captions->url) : MediaError::None;
        },
        [&] { return isFirst && m_settings.start ? m_player.seekTime(*m_settings.start) : MediaError::None; },
        // A speed starts a prepared player by itself; play() would go back to the speed that was reported last.
        [&] { return m_settings.speed ? m_player.setSpeed(*m_settings.speed) : m_player.play(); },
    });
}

bool Playback::beginWith(size_t index)
{
    for (std::optional<size_t> candidate = index; candidate; candidate = after(*candidate)) {
        m_index = *candidate;
        const bool isFirst = m_begun++ == 0;
        const Medium &medium = m_settings.media[m_index];
        const auto error = log().run([&] { return playMedium(medium, isFirst); });
        if (error == MediaError::None)
            return true;
        fail(medium.name + QLatin1String(": ") + enumeratorName(error));
    }
    return false;
}

std::optional<size_t> Playback::after(size_t index)
{
    if (index + 1 < m_settings.media.size())
        return index + 1;
    if (m_settings.repeatMode == RepeatMode::All && std::exchange(m_hasPlayed, false))
        return 0;
    return std::nullopt;
}

void Playback::onEnd()
{
    m_hasPlayed = true;
    const auto following = after(m_index);
    if (!following || !beginWith(*following))
        finish();
}

void Playback::onError(MediaError::Type error, unsigned position)
{
    fail(QStringLiteral("%1: %2 at %3").arg(m_settings.media[m_index].name, enumeratorName(error), timeText(position)));
    const auto following = after(m_index);
    if (!following || !beginWith(*following))
        finish();
}

void Playback::onKey(Key key)
{
    const auto command = [&]() -> MediaError::Type {
        switch (key) {
        case Key::PlayPause:
            return togglePause();
        case Key::Back:
            return seekBy(-SeekStep);
        case Key::Forward:
            return seekBy(SeekStep);
        case Key::Louder:
            return changeVolume(VolumeStep);
        case Key::Softer:
            return changeVolume(-VolumeStep);
        case Key::Next:
            return next();
        case Key::Previous:
            return previous();
        case Key::Captions:
            return m_player.setClosedCaptionEnabled(!m_player.closedCaptionEnabled());
        case Key::Quit:
            finish();
            break;
        }
        return MediaError::None;
    };
    if (const auto error = log().run(command); error != MediaError::None)
        report(enumeratorName(error));
}

MediaError::Type Playback::togglePause()
{
    return m_player.mediaState() == MediaState::Paused ? m_player.play() : m_player.pause();
}

MediaError::Type Playback::seekBy(int milliseconds)
{
    const auto target = std::max<qint64>(0, qint64(m_sought.value_or(m_player.position())) + milliseconds);
    const unsigned end = m_player.duration();
    m_sought = end > 0 ? unsigned(std::min<qint64>(target, end)) : unsigned(target);
    return m_player.seekTime(*m_sought);
}

MediaError::Type Playback::changeVolume(double step)
{
    // Steps are counted, so that errors of the fractions do not add up.
    const double steps = std::round((m_player.volume() + step) / VolumeStep);
    return m_player.setVolume(std::clamp(steps / std::round(1 / VolumeStep), 0.0, 1.0));
}

MediaError::Type Playback::next()
{
    if (m_player.track() < m_player.trackCount())
        return m_player.nextTrack();
    m_hasPlayed = true;
    if (const auto following = after(m_index); following && !beginWith(*following))
        finish();
    return MediaError::None;
}

MediaError::Type Playback::previous()
{
    if (m_player.track() > 1)
        return m_player.previousTrack();
    if (m_index == 0)
        return m_player.seekTime(0);
    if (!beginWith(m_index - 1))
        finish();
    return MediaError::None;
}

bool Playback::hold()
{
    return m_player.mediaState() == MediaState::Started && m_player.pause() == MediaError::None;
}

QString Playback::title() const
{
    const QVariantMap metaData = m_player.metaData();
    const QString title = metaData.value(QLatin1String(multimedia::MetaData::Title)).toString();
    const QString artist = metaData.value(QLatin1String(multimedia::MetaData::Artist)).toString();
    if (!title.isEmpty())
        return printable(artist.isEmpty() ? title : title + QLatin1String(" - ") + artist);
    // A medium that plays and still has no title will have none.
    if (m_player.position() == 0 || m_player.mediaState() == MediaState::Unprepared)
        return {};
    const QUrl uri(metaData.value(QLatin1String(multimedia::MetaData::Uri)).toString());
    return printable(m_player.trackCount() > 1 && !uri.fileName().isEmpty() ? uri.fileName()
                                                                            : m_settings.media[m_index].name);
}

void Playback::refresh()
{
    if (m_publication) {
        m_publication->setNeighbours(m_player.track() < m_player.trackCount() || m_index + 1 < m_settings.media.size()
                                         || m_settings.repeatMode == RepeatMode::All,
                                     m_player.track() > 1 || m_index > 0);
    }
    const bool isList = m_player.trackCount() > 1;
    const bool hasCaptions = m_settings.captions && !m_settings.windowId.isEmpty();
    m_display->show({
        .number = m_begun,
        .title = title(),
        .isPaused = m_player.mediaState() == MediaState::Paused,
        .buffering = m_player.bufferStatus() == BufferStatus::Buffering ? m_buffering : -1,
        .position = m_player.position(),
        .duration = m_player.duration(),
        .volume = m_player.volume(),
        .track = isList ? m_player.track() : unsigned(m_index + 1),
        .trackCount = isList ? m_player.trackCount() : unsigned(m_settings.media.size()),
        .speed = m_player.speed(),
        .captions = hasCaptions ? std::optional(m_player.closedCaptionEnabled()) : std::nullopt,
    });
}

} // namespace voro
