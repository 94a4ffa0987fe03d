#include "Player.h"

#include "Tags.h"

#include <pps/Text.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

constexpr guint OpenTimeout = 15'000;

std::string event(std::string_view name)
{
    std::string lines;
    pps::appendText(lines, "msg", name);
    return lines;
}

} // namespace

Player::Player(Reports reports)
    : m_reports(std::move(reports)),
      m_pipeline({.decoded = [this] { onDecoded(); },
                  .ended = [this] { onEnded(); },
                  .failed = [this](const Result &result) { onFailed(result); },
                  .unrecognized = [this](const Result &result) { onUnrecognized(result); },
                  .tagged = [this](const GstTagList *tags) { onTagged(tags); },
                  .changed = [this] { onChanged(); },
                  .buffering = [this](int percent) { onBuffering(percent); }})
{}

void Player::open(const std::string &url, bool isPlaylist, std::optional<int64_t> position, Answer answer)
{
    close();
    m_medium = Medium(url);
    m_answer = std::move(answer);
    m_position = position.value_or(0);
    m_phase = Phase::Opening;
    if (const Result problem = m_medium.check(); !problem) {
        finishOpen(problem);
    } else if (isPlaylist || m_medium.isPlaylist()) {
        // The one tells the application to try the other.
        finishOpen({ErrorCode::Internal, isPlaylist ? "no playlist that can be played" : "a playlist"});
    } else {
        load();
    }
}

void Player::load()
{
    m_tags.reset(gst_tag_list_new_empty());
    m_bufferLevel = 100;
    m_openTimer.reset(g_timeout_add(OpenTimeout, onOpenTimeout, this));
    m_pipeline.load(m_medium.uri(), m_settings.isAudible);
}

void Player::finishOpen(const Result &result)
{
    m_openTimer.reset();
    if (result) {
        m_phase = Phase::Ready;
        m_lastTrack.clear();
        reportTrack();
        reportQueue();
        reportStatus();
    } else {
        end(Phase::Closed);
    }
    std::exchange(m_answer, nullptr)(result);
}

void Player::close()
{
    if (m_answer) {
        std::exchange(m_answer, nullptr)({ErrorCode::InvalidState, "the medium was closed"});
    }
    end(Phase::Closed);
}

void Player::end(Phase phase)
{
    m_phase = phase;
    m_statusTimer.reset();
    m_openTimer.reset();
    m_pipeline.unload();
}

Result Player::play()
{
    switch (m_phase) {
    case Phase::Ready:
        return begin();
    case Phase::Stopped:
        if (const Result problem = m_medium.check(); !problem) {
            return problem;
        }
        m_phase = Phase::Starting;
        load();
        return {};
    case Phase::Starting:
    case Phase::Running:
        return {};
    case Phase::Closed:
    case Phase::Opening:
        break;
    }
    return {ErrorCode::InvalidState, "no medium"};
}

Result Player::begin()
{
    m_phase = Phase::Running;
    const int rate = m_settings.speed == 0 ? 1000 : m_settings.speed;
    if ((m_position != 0 || rate != 1000) && !m_pipeline.seek(m_position, rate)) {
        m_phase = Phase::Ready;
        return {ErrorCode::UnsupportedOperation, "the medium cannot be played from there or at that speed"};
    }
    proceed();
    return {};
}

/** Goes on as speed and buffer say. */
void Player::proceed()
{
    if (m_settings.speed == 0 || m_bufferLevel < 100) {
        // A sink that never played is not even opened: it would sound late.
        if (m_pipeline.audio().isOpen()) {
            m_pipeline.hold();
        }
    } else {
        m_pipeline.run();
    }
    restartStatusTimer();
    reportStatus();
}

void Player::stop()
{
    if (m_phase == Phase::Running || m_phase == Phase::Starting || m_phase == Phase::Ready) {
        end(Phase::Stopped);
        m_position = 0;
        reportStatus();
    }
}

Result Player::setSpeed(int speed)
{
    if (m_phase == Phase::Running && speed != 0 && speed != m_pipeline.rate()
        && !m_pipeline.seek(m_pipeline.position(), speed)) {
        return {ErrorCode::UnsupportedOperation, "the medium cannot be played at that speed"};
    }
    m_settings.speed = speed;
    if (m_phase == Phase::Running) {
        proceed();
    }
    return {};
}

Result Player::seek(int64_t position)
{
    const int64_t duration = m_pipeline.duration();
    m_position = duration > 0 ? std::min(position, duration) : position;
    if (m_phase == Phase::Running && !m_pipeline.seek(m_position, m_pipeline.rate())) {
        return {ErrorCode::UnsupportedOperation, "the medium cannot be sought in"};
    }
    if (m_phase != Phase::Opening) {
        reportStatus();
    }
    return {};
}

void Player::apply()
{
    m_pipeline.audio().setVolume(m_settings.volume);
    m_pipeline.audio().setPreset(m_settings.preset);
    if (m_statusTimer.isActive()) {
        restartStatusTimer();
    }
}

void Player::onDecoded()
{
    m_openTimer.reset();
    if (m_phase == Phase::Opening) {
        finishOpen({});
    } else if (m_phase == Phase::Starting) {
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
    if (m_pipeline.rate() > 0 && !m_settings.repeat.empty() && m_settings.repeat != "none"
        && m_pipeline.seek(0, m_pipeline.rate())) {
        reportStatus();
        return;
    }
    m_position = m_pipeline.rate() < 0 ? 0 : std::max(m_pipeline.duration(), m_pipeline.position());
    end(Phase::Stopped);
    reportStatus();
    m_position = 0;
    m_reports.event(event("ended"));
}

void Player::onFailed(const Result &result)
{
    if (m_phase == Phase::Opening) {
        finishOpen(result);
        return;
    }
    if (m_phase == Phase::Stopped || m_phase == Phase::Closed) {
        return;
    }
    m_position = position();
    end(Phase::Stopped);
    std::string lines = event("failed");
    pps::appendNumber(lines, "err", static_cast<int>(result.code));
    pps::appendText(lines, "error", result.text);
    pps::appendNumber(lines, "track", 1);
    pps::appendNumber(lines, "position", m_position);
    reportStatus();
    m_position = 0;
    m_reports.event(lines);
}

void Player::onUnrecognized(const Result &result)
{
    // What begins like a medium and is none was cut off or damaged.
    onFailed(m_medium.beginsLikeMedium() ? Result{ErrorCode::ResourceCorrupted, result.text} : result);
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
    const Owned<GstTagList> news(gst_tag_list_copy(tags));
    // A bit rate is measured again with every frame; the first one is as good as the next.
    if (gst_tag_list_get_tag_size(m_tags.get(), GST_TAG_BITRATE) > 0) {
        gst_tag_list_remove_tag(news.get(), GST_TAG_BITRATE);
    }
    m_tags.reset(gst_tag_list_merge(m_tags.get(), news.get(), GST_TAG_MERGE_REPLACE));
    onChanged();
}

void Player::onChanged()
{
    if (m_phase == Phase::Ready || m_phase == Phase::Running) {
        reportTrack();
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

int64_t Player::position() const
{
    return m_phase == Phase::Running ? m_pipeline.position() : m_position;
}

void Player::reportQueue()
{
    std::string lines = event("queue");
    pps::appendNumber(lines, "current", 1);
    pps::appendNumber(lines, "total", 1);
    m_reports.event(lines);
}

void Player::reportTrack()
{
    std::string lines = event("track");
    pps::appendNumber(lines, "track", 1);
    pps::appendText(lines, "url", m_medium.uri());
    pps::appendNumber(lines, "md_title_duration", m_pipeline.duration());
    pps::appendBool(lines, "md_title_seekable", m_pipeline.isSeekable());
    pps::appendNumber(lines, "md_title_samplerate", m_pipeline.audio().sampleRate());
    pps::appendNumber(lines, "md_video_width", 0);
    pps::appendNumber(lines, "md_video_height", 0);
    lines += toAttributes(m_tags.get());
    if (lines != m_lastTrack) {
        m_lastTrack = lines;
        m_reports.event(lines);
    }
}

void Player::reportStatus()
{
    const bool isBuffering = m_bufferLevel < 100;
    const char *status = m_phase != Phase::Running ? "idle" : isBuffering ? "buffering" : "playing";
    std::string lines = event("status");
    pps::appendNumber(lines, "position", position());
    pps::appendText(lines, "bufferlevel", std::to_string(m_bufferLevel) + "/100");
    pps::appendText(lines, "bufferstatus", status);
    m_reports.event(lines);
}

void Player::restartStatusTimer()
{
    const bool isWanted = m_phase == Phase::Running && m_settings.speed != 0;
    m_statusTimer.reset(isWanted ? g_timeout_add(m_settings.interval, onStatusDue, this) : 0);
}

gboolean Player::onStatusDue(gpointer self)
{
    static_cast<Player *>(self)->reportStatus();
    return G_SOURCE_CONTINUE;
}

} // namespace voro::renderer
