// What the keys do while something plays.

#include "Output.h"
#include "Playback.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace voro {

using multimedia::MediaError;
using multimedia::MediaState;

namespace {

constexpr int SeekStep = 5000;
constexpr int FarSeekStep = 60'000;
constexpr double VolumeStep = 0.05;
constexpr double SpeedStep = 0.25;

} // namespace

void Playback::onKey(Key key)
{
    if (key >= Key::Tenth0 && key <= Key::Tenth9) {
        const auto tenths = static_cast<unsigned>(key) - static_cast<unsigned>(Key::Tenth0);
        perform([this, tenths] { return seekToTenth(tenths); });
        return;
    }
    perform([&]() -> MediaError::Type {
        switch (key) {
        case Key::PlayPause:
            return togglePause();
        case Key::Back:
            return seekBy(-SeekStep);
        case Key::Forward:
            return seekBy(SeekStep);
        case Key::FarBack:
            return seekBy(-FarSeekStep);
        case Key::FarForward:
            return seekBy(FarSeekStep);
        case Key::Louder:
            return changeVolume(VolumeStep);
        case Key::Softer:
            return changeVolume(-VolumeStep);
        case Key::Mute:
            return toggleMute();
        case Key::Slower:
            return changeSpeed(-SpeedStep);
        case Key::Faster:
            return changeSpeed(SpeedStep);
        case Key::Next:
            return next();
        case Key::Previous:
            return previous();
        case Key::NextChapter:
            return seekToChapter(m_chapters.after(sought()));
        case Key::PreviousChapter:
            return seekToChapter(m_chapters.before(sought()));
        case Key::Captions:
            return m_player.setClosedCaptionEnabled(!m_player.closedCaptionEnabled());
        case Key::Help:
            showKeys();
            break;
        case Key::Quit:
            finish();
            break;
        case Key::Tenth0:
        case Key::Tenth9:
            break;
        }
        return MediaError::None;
    });
}

MediaError::Type Playback::togglePause()
{
    return m_player.mediaState() == MediaState::Started ? m_player.pause() : start();
}

MediaError::Type Playback::stop()
{
    m_isStopped = true;
    const auto error = m_player.stop();
    m_isStopped = error == MediaError::None;
    return error;
}

MediaError::Type Playback::seekBy(int milliseconds)
{
    if (!m_player.isSeekable()) {
        return MediaError::UnsupportedOperation;
    }
    const auto target = std::max<qint64>(0, static_cast<qint64>(sought()) + milliseconds);
    const unsigned end = m_player.duration();
    m_sought = end > 0 ? static_cast<unsigned>(std::min<qint64>(target, end)) : static_cast<unsigned>(target);
    return m_player.seekTime(*m_sought);
}

MediaError::Type Playback::seekToTenth(unsigned tenths)
{
    if (!m_player.isSeekable() || m_player.duration() == 0) {
        return MediaError::UnsupportedOperation;
    }
    m_sought = static_cast<unsigned>(static_cast<quint64>(m_player.duration()) * tenths / 10);
    return m_player.seekTime(*m_sought);
}

MediaError::Type Playback::seekToChapter(std::optional<unsigned> begin)
{
    if (!begin) {
        report(QStringLiteral("there is no further chapter"));
        return MediaError::None;
    }
    if (!m_player.isSeekable()) {
        return MediaError::UnsupportedOperation;
    }
    m_sought = begin;
    return m_player.seekTime(*begin);
}

MediaError::Type Playback::toggleMute()
{
    if (m_volume) {
        return m_player.setVolume(*std::exchange(m_volume, std::nullopt));
    }
    m_volume = m_player.volume();
    return m_player.setVolume(0);
}

MediaError::Type Playback::changeSpeed(double step)
{
    const double speed = std::clamp(m_speed.value_or(1) + step, SpeedStep, FastestSpeed);
    const bool isPlaying = m_player.mediaState() == MediaState::Started;
    const auto error = isPlaying ? m_player.setSpeed(speed) : MediaError::None;
    if (error == MediaError::None) {
        m_speed = speed;
    }
    return error;
}

void Playback::showKeys()
{
    clearLine();
    print(keyHelp());
    refresh();
}

MediaError::Type Playback::changeVolume(double step)
{
    m_volume.reset();
    // Steps are counted, so that errors of the fractions do not add up.
    const double steps = std::round((m_player.volume() + step) / VolumeStep);
    return m_player.setVolume(std::clamp(steps / std::round(1 / VolumeStep), 0.0, 1.0));
}

MediaError::Type Playback::next()
{
    if (m_player.track() < trackCount()) {
        return m_player.nextTrack();
    }
    return hasNext() ? m_player.seekTrack(1) : MediaError::None;
}

MediaError::Type Playback::previous()
{
    return m_player.track() > 1 ? m_player.previousTrack() : m_player.seekTime(0);
}

} // namespace voro
