#include "Player.h"

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

constexpr guint OpenTimeout = 15'000;

} // namespace

Player::Player(Playback &playback, Probe &probe, Reports::Send send)
    : m_reports(std::move(send)),
      m_playback(playback),
      m_next(playback, probe, m_queue, m_reports, [this] { prepareNext(); })
{
    m_playback.listen({.decoded = [this] { onDecoded(); },
                       .ended = [this] { onEnded(); },
                       .advanced = [this] { onAdvanced(); },
                       .failed = [this](const Failure &failure) { onPlaybackFailed(failure); },
                       .tagged = [this](const GstTagList *tags) { onTagged(tags); },
                       .changed = [this] { onChanged(); },
                       .buffering = [this](int percent) { onBuffering(percent); }});
}

// Opening and closing

void Player::open(const requests::Open &request, Answer answer)
{
    const Medium &medium = request.medium;
    const bool isPlaylist = request.type == InputType::Playlist;
    close();
    m_answer = std::move(answer);
    m_phase = Phase::Opening;
    m_reports.reset();
    m_isForward = true;
    m_isChanging = false;
    m_mayBePlaylist = false;
    if (const Result problem = medium.check(); !problem) {
        finishOpen(problem);
    } else if (isPlaylist != medium.isPlaylist() && (medium.isLocal() || !isPlaylist)) {
        // The application tries the other type then.
        finishOpen({ErrorCode::Internal, isPlaylist ? "the medium is not a playlist" : "the medium is a playlist"});
        if (request.isTrackNext) {
            m_playback.loadAhead({medium, {}, m_outputs});
        }
    } else if (!isPlaylist) {
        m_queue.assign({{medium, {}}});
        m_mayBePlaylist = !medium.isLocal();
        loadTrack(1, request.start.milliseconds);
    } else {
        m_playlist.read(medium, [this, start = request.start](const Result &result, std::vector<QueueEntry> entries) {
            if (!result) {
                finishOpen(result);
                return;
            }
            m_queue.assign(std::move(entries));
            openTrack(std::clamp(start.track, 1U, m_queue.total()), start.milliseconds);
        });
    }
}

void Player::openTrack(unsigned track, int64_t position)
{
    m_queue.setCurrent(track);
    m_position = position;
    Result problem;
    do {
        problem = medium(m_queue.current()).check();
    } while (!problem && passOver(problem));
    if (problem) {
        load();
    }
}

/** Loads a track that has been checked. */
void Player::loadTrack(unsigned track, int64_t position)
{
    m_queue.setCurrent(track);
    m_position = position;
    load();
}

void Player::load()
{
    const unsigned track = m_queue.current();
    auto known = m_next.take();
    m_track.begin(medium(track), known && known->track == track ? std::move(known->info) : TrackInfo());
    m_next.forget();
    m_bufferLevel = 100;
    m_openTimer.reset(g_timeout_add(OpenTimeout, onOpenTimeout, this));
    m_playback.load({medium(track), captions(track), m_outputs, m_isChanging});
    prepareNext();
}

void Player::reload()
{
    if (m_phase == Phase::Running || m_phase == Phase::Ready) {
        m_position = m_track.info().isSeekable ? position() : 0;
        m_phase = m_phase == Phase::Running ? Phase::Starting : Phase::Opening;
        load();
    } else if (isOpening()) {
        load();
    }
}

bool Player::passOver(const Result &problem)
{
    const unsigned track = m_queue.current();
    m_queue.setBad(track);
    const auto other = m_queue.replacement(m_isForward);
    if (!other && (!m_played || problem.code == ErrorCode::OutputUnavailable)) {
        fail(problem);
        return false;
    }
    m_reports.logPassedOver(track, problem.text);
    if (!other) {
        complete(m_played->track, m_played->end);
        return false;
    }
    m_queue.setCurrent(*other);
    m_position = 0;
    return true;
}

void Player::finishOpen(const Result &result)
{
    m_openTimer.reset();
    if (result) {
        m_phase = Phase::Ready;
        m_track.refresh(m_playback);
        reportCurrent();
        prepareNext();
    } else {
        end(Phase::Closed);
    }
    if (m_answer) {
        std::exchange(m_answer, nullptr)(result);
    }
    if (result) {
        m_track.measure(m_playback.isCommonFile());
    }
}

void Player::close()
{
    m_playlist.cancel();
    if (m_answer) {
        std::exchange(m_answer, nullptr)({ErrorCode::InvalidState, "the medium was closed"});
    }
    end(Phase::Closed);
}

void Player::end(Phase phase)
{
    m_phase = phase;
    m_played.reset();
    m_device.watch({});
    m_statusTimer.reset();
    m_openTimer.reset();
    m_next.forget();
    m_fetch.cancel();
    m_playback.unload();
    m_track.end();
}

// Playing

Result Player::play()
{
    switch (m_phase) {
    case Phase::Ready:
        return begin();
    case Phase::Opening:
        if (m_answer) {
            break;
        }
        m_phase = Phase::Starting;
        return {};
    case Phase::Stopped:
        return replay();
    case Phase::Starting:
    case Phase::Running:
        return {};
    case Phase::Closed:
        break;
    }
    return {ErrorCode::InvalidState, "no medium"};
}

/** Plays what was stopped, from where it was. */
Result Player::replay()
{
    const bool isSingle = m_queue.total() == 1;
    if (const Result problem = isSingle ? medium(1).check() : Result(); !problem) {
        return problem;
    }
    m_phase = Phase::Starting;
    m_isForward = true;
    if (isSingle) {
        loadTrack(1, m_position);
    } else {
        openTrack(m_queue.current(), m_position);
    }
    return {};
}

Result Player::begin()
{
    m_phase = Phase::Running;
    const Speed speed = m_speed.isPaused() ? NormalSpeed : m_speed;
    if (speed.isBackward() && m_position == 0) {
        holdAtBeginning();
    } else if ((m_position != 0 || speed != NormalSpeed) && !seekTo(m_position, speed)) {
        m_phase = Phase::Ready;
        return {ErrorCode::UnsupportedOperation, "the medium cannot be played from there or at that speed"};
    }
    prepareNext();
    proceed();
    return {};
}

/** Goes on as speed and buffer say. */
void Player::proceed()
{
    if (m_speed.isPaused() || m_bufferLevel < 100) {
        // A sink that never played is not even opened: it would sound late.
        if (m_playback.hasBegun()) {
            m_playback.hold();
        }
    } else {
        m_playback.run();
    }
    restartStatusTimer();
    watchDevice();
    reportStatus();
}

void Player::watchDevice()
{
    const bool isWanted = m_settings.pausesWithDevice && m_phase == Phase::Running && !m_speed.isPaused();
    m_device.watch(isWanted ? m_playback.device() : std::string());
}

void Player::onDeviceLost()
{
    m_speed = Paused;
    proceed();
    m_reports.send(SpeedChange{Paused});
}

/** Pauses at the beginning, after playing backward. */
void Player::holdAtBeginning()
{
    m_speed = Paused;
    reportStatus();
    m_reports.send(SpeedChange{Paused});
}

void Player::stop()
{
    if (m_phase != Phase::Stopped && m_phase != Phase::Closed) {
        end(Phase::Stopped);
        m_position = 0;
        reportStatus();
    }
}

Result Player::setSpeed(Speed speed)
{
    if (m_phase == Phase::Running && !speed.isPaused() && speed != m_playback.speed()) {
        const int64_t now = position();
        if (speed.isBackward() && now == 0) {
            holdAtBeginning();
            proceed();
            return {};
        }
        if (m_playback.succession().isTaken()) {
            m_speed = speed;
            reload();
            return {};
        }
        if (!seekTo(now, speed)) {
            return {ErrorCode::UnsupportedOperation, "the medium cannot be played at that speed"};
        }
    }
    m_speed = speed;
    if (m_phase == Phase::Running) {
        prepareNext();
        proceed();
    }
    return {};
}

Result Player::seek(unsigned track, int64_t position)
{
    if (track == 0 || track > m_queue.total()) {
        return {ErrorCode::InvalidParameter, "there is no such track"};
    }
    if (track != m_queue.current()) {
        m_isForward = track > m_queue.current();
        m_played.reset();
        if (m_phase == Phase::Stopped) {
            m_queue.setCurrent(track);
            m_position = position;
        } else {
            m_phase = m_phase == Phase::Running || m_phase == Phase::Starting ? Phase::Starting : Phase::Opening;
            openTrack(track, position);
        }
        reportCurrent();
        return {};
    }
    const int64_t length = m_track.info().duration;
    const int64_t target = length > 0 ? std::min(position, length) : position;
    if (m_phase == Phase::Ready && target != 0 && !m_track.info().isSeekable) {
        return {ErrorCode::UnsupportedOperation, "the medium cannot be sought in"};
    }
    if (m_phase == Phase::Running && m_playback.succession().isTaken()) {
        reload();
        m_position = target;
    } else if (m_phase == Phase::Running) {
        if (!seekTo(target, m_playback.speed())) {
            return {ErrorCode::UnsupportedOperation, "the medium cannot be sought in"};
        }
        prepareNext();
    }
    m_position = target;
    reportStatus();
    return {};
}

/** Goes to a time; false when the medium does not allow it, which then plays on undisturbed. */
bool Player::seekTo(int64_t position, Speed speed)
{
    return m_track.info().isSeekable && m_playback.seek(position, speed);
}

void Player::apply(const Settings &settings, const Outputs &outputs)
{
    const bool isOtherPlace =
        outputs != m_outputs
        || (m_queue.total() > 0 && settings.captions.contains(m_queue.current())
            && settings.captions.at(m_queue.current()).medium != captions(m_queue.current()).medium);
    const bool isHeardLate = m_playback.isFarAhead() && isOpen() && m_track.info().isSeekable
                             && (settings.volume != m_settings.volume || settings.preset != m_settings.preset);
    m_isChanging |= isHeardLate;
    m_settings = settings;
    m_outputs = outputs;
    m_queue.setRepeat(settings.repeat);
    m_playback.setVolume(settings.volume);
    m_playback.setPreset(settings.preset);
    m_playback.setSource(settings.source);
    if (m_statusTimer.isActive()) {
        restartStatusTimer();
    }
    watchDevice();
    if (isOtherPlace || isHeardLate) {
        reload();
    } else if (isOpen()) {
        m_playback.selectCaptions(captions(m_queue.current()));
        if (m_next.isOutdated()) {
            reload();
        } else {
            prepareNext();
        }
    }
}

void Player::prepareNext()
{
    const bool isNormalSpeed = (m_speed.isPaused() || m_speed == NormalSpeed) && m_playback.speed() == NormalSpeed;
    m_next.prepare({isOpen(), isNormalSpeed, m_track.info().duration, m_settings.captions});
}

// Reports

CaptionChoice Player::captions(unsigned track) const
{
    const auto found = m_settings.captions.find(track);
    return found == m_settings.captions.end() ? CaptionChoice() : found->second;
}

int64_t Player::position() const
{
    return m_phase == Phase::Running && m_playback.hasBegun() ? m_playback.position() : m_position;
}

void Player::reportTrack()
{
    m_reports.track(m_queue.current(), uri(m_queue.current()), m_track.info());
    m_track.shrinkCover();
}

void Player::reportCurrent()
{
    if (m_playback.isSilent()) {
        m_reports.send(events::Silent{});
    }
    reportTrack();
    m_reports.neighbours(m_queue);
    m_reports.queue(m_queue.current(), m_queue.total());
    reportStatus();
}

void Player::reportStatus()
{
    const BufferStatus filling = m_bufferLevel < 100 ? BufferStatus::Buffering : BufferStatus::Playing;
    m_reports.send(events::Status{position(), m_bufferLevel, m_phase == Phase::Running ? filling : BufferStatus::Idle});
}

void Player::restartStatusTimer()
{
    const bool isWanted = m_phase == Phase::Running && !m_speed.isPaused();
    m_statusTimer.reset(isWanted ? g_timeout_add(m_settings.interval, onStatusDue, this) : 0);
}

gboolean Player::onStatusDue(gpointer self)
{
    auto *player = static_cast<Player *>(self);
    player->reportStatus();
    player->watchDevice();
    return G_SOURCE_CONTINUE;
}

} // namespace voro::renderer
