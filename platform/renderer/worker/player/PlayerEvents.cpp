#include "Player.h"

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

constexpr char WasCut[] = "the file was cut off while it played";

} // namespace

// From track to track

void Player::onAdvanced()
{
    if (m_track.hasShrunk()) {
        m_reports.logPassedOver(m_queue.current(), WasCut);
        m_queue.setBad(m_queue.current());
    }
    if (auto next = m_next.take()) {
        m_queue.setCurrent(next->track);
        m_track.begin(medium(next->track), std::move(next->info));
    } else if (m_track.hasShrunk()) {
        // Its rest would be repeated for ever.
        onEnded();
        return;
    }
    reportCurrent();
    prepareNext();
    m_track.measure(m_playback.isCommonFile());
}

// Reports of the pipeline

void Player::onDecoded()
{
    m_openTimer.reset();
    if (m_phase == Phase::Opening) {
        finishOpen({});
    } else if (m_phase == Phase::Starting) {
        m_track.refresh(m_playback);
        m_phase = Phase::Running;
        m_played.reset();
        reportCurrent();
        m_track.measure(m_playback.isCommonFile());
        if (const Result result = begin(); !result) {
            onFailed(result);
        }
    }
}

void Player::onEnded()
{
    if (m_phase != Phase::Running) {
        // A medium without a single sample ends before it is decoded.
        onFailed({ErrorCode::ResourceCorrupted, "there is nothing to play"});
        return;
    }
    if (m_track.hasShrunk()) {
        onFailed({ErrorCode::Read, WasCut});
        return;
    }
    if (m_playback.speed().isBackward()) {
        // Held first, because a seek that is on its way would be played before it could be held.
        m_playback.hold();
        m_playback.seek(0, NormalSpeed);
        holdAtBeginning();
        proceed();
        return;
    }
    const auto next = m_queue.following();
    const int64_t last = std::max(m_track.info().duration, m_playback.position());
    const bool isSame = next == m_queue.current();
    if (isSame && m_playback.position() > 0 && seekTo(0, m_playback.speed())) {
        prepareNext();
        reportStatus();
    } else if (next && (!isSame || (m_playback.position() > 0 && !m_track.info().isSeekable))) {
        m_isForward = true;
        m_phase = Phase::Starting;
        m_played = Played{m_queue.current(), last};
        openTrack(*next, 0);
    } else {
        complete(m_queue.current(), last);
    }
}

void Player::complete(unsigned track, int64_t last)
{
    m_queue.setCurrent(track);
    end(Phase::Stopped);
    m_position = last;
    reportStatus();
    m_reports.send(events::Ended{track, m_position});
    m_position = 0;
    m_queue.setCurrent(1);
}

void Player::onFailed(const Result &cause)
{
    const bool isMedium = cause.code != ErrorCode::OutputUnavailable;
    const Result result = isMedium && m_track.hasShrunk() ? Result(ErrorCode::Read, WasCut) : cause;
    if (m_phase == Phase::Stopped || m_phase == Phase::Closed) {
        return;
    }
    if (m_phase == Phase::Running) {
        m_position = position();
    }
    if (m_phase == Phase::Running && m_settings.pausesWithDevice && result.code == ErrorCode::OutputUnavailable) {
        // The device took the stream along; it goes on with another one when the application wants.
        m_speed = Paused;
        m_phase = Phase::Starting;
        load();
        m_reports.send(SpeedChange{Paused});
        return;
    }
    if (m_answer && result.code == ErrorCode::UnsupportedMediaType && std::exchange(m_mayBePlaylist, false)) {
        lookForPlaylist(result);
        return;
    }
    if (m_queue.total() < 2) {
        fail(result);
        return;
    }
    m_phase = m_phase == Phase::Running ? Phase::Starting : m_phase == Phase::Ready ? Phase::Opening : m_phase;
    if (passOver(result)) {
        openTrack(m_queue.current(), 0);
    }
}

/** A server may send a playlist under any name: looks at the content of what is no medium. */
void Player::lookForPlaylist(const Result &result)
{
    m_openTimer.reset();
    m_playback.unload();
    m_fetch.get(uri(1), [this, result](const Result &, const std::string &content) {
        finishOpen(Medium::isPlaylistText(content) ? Result(ErrorCode::Internal, "the medium is a playlist") : result);
    });
}

/** Nothing can be played any more. */
void Player::fail(const Result &result)
{
    if (m_answer) {
        finishOpen(result);
        return;
    }
    end(Phase::Stopped);
    reportStatus();
    m_reports.failed(result, m_queue.current(), m_position);
    m_position = 0;
}

void Player::onPlaybackFailed(const Failure &failure)
{
    // A file that begins like a medium and is none was cut off or damaged.
    const bool isDamaged = failure.isUnrecognized && medium(m_queue.current()).beginsLikeMedium();
    onFailed(isDamaged ? Result(ErrorCode::ResourceCorrupted, failure.result.text) : failure.result);
}

gboolean Player::onOpenTimeout(gpointer self)
{
    auto *player = static_cast<Player *>(self);
    player->m_openTimer.forget();
    player->onFailed({ErrorCode::SourceUnavailable, "the source does not answer"});
    return G_SOURCE_REMOVE;
}

void Player::onTagged(const GstTagList *tags)
{
    m_track.merge(tags);
    onChanged();
}

void Player::onChanged()
{
    if (isOpen() && !m_playback.succession().isTaken()) {
        m_track.refresh(m_playback);
        reportTrack();
        watchDevice();
    }
}

void Player::onBuffering(int percent)
{
    const bool wasFull = m_bufferLevel == 100;
    m_bufferLevel = percent;
    if (m_phase != Phase::Running) {
        return;
    }
    if (wasFull != (percent == 100)) {
        proceed();
    } else {
        reportStatus();
    }
}

} // namespace voro::renderer
