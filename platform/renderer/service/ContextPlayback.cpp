#include "Context.h"

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

Result noInput()
{
    return {ErrorCode::InvalidState, "there is no input"};
}

} // namespace

void Context::play(const pps::Message &)
{
    if (!m_input) {
        finish(noInput());
    } else if (m_state == State::Playing) {
        finish({});
    } else if (const Result problem = checkRecording(); !problem) {
        finish(problem);
    } else if (m_isOpen) {
        startPlaying();
    } else if (m_deaths >= MostDeaths) {
        finish({ErrorCode::ResourceCorrupted, "playing this medium crashed the renderer repeatedly"});
    } else {
        open(*m_input, [this](const Result &result) {
            m_isOpen = static_cast<bool>(result);
            if (m_isOpen) {
                startPlaying();
            } else {
                finish(result);
            }
        });
    }
}

/** Whether a recording could begin now. */
Result Context::checkRecording() const
{
    if (!isRecording()) {
        return {};
    }
    const RecordingFile *file = m_journal.file();
    return file && !file->isUsed() ? Result() : Result(ErrorCode::InvalidState, "there is no file, or it is finished");
}

void Context::startPlaying()
{
    if (isRecording()) {
        const auto recording = OpenRecording::make(m_view, m_journal.file()->path(), m_owner);
        waitForDisk(
            m_journal.file()->path(), [recording] { return recording->open(); },
            [this, recording](const Result &result) { startRecording(recording, result); });
        return;
    }
    m_engine->ask(requests::Play{}, [this](const Result &result) {
        showPlaying(result);
        finish(result);
    });
}

void Context::startRecording(const std::shared_ptr<OpenRecording> &recording, const Result &opened)
{
    if (!opened) {
        closeAndFinish(recording, opened);
        return;
    }
    // The worker may have died meanwhile.
    if (!m_isOpen || !m_engine->pass(recording->descriptor())) {
        closeAndFinish(recording, {ErrorCode::Internal, "the worker does not take the file"});
        return;
    }
    m_engine->ask(requests::Play{}, [this, recording](const Result &result) {
        if (result) {
            recording->keep();
            m_journal.file()->setUsed();
            m_recording = recording;
        }
        showPlaying(result);
        closeAndFinish(recording, result);
    });
}

/** Closes the daemon's side of the file and finishes a play after that. */
void Context::closeAndFinish(const std::shared_ptr<OpenRecording> &recording, const Result &result)
{
    const auto work = [recording] {
        recording->close();
        return Result();
    };
    waitForDisk(m_journal.file()->path(), work, [this, result](const Result &) { finish(result); });
}

void Context::showPlaying(const Result &result)
{
    if (result) {
        m_resume.reset();
        setState(State::Playing);
    }
}

void Context::stop(const pps::Message &)
{
    if (m_input && m_state == State::Playing) {
        stopPlaying([this](const Result &result) { finish(result); });
        return;
    }
    if (m_hasEnded) {
        if (!m_hasFailed && !m_resume) {
            // Playing would begin anew.
            m_resume = TrackPosition{1, 0};
        }
        setState(m_state);
    }
    finish({});
}

void Context::stopPlaying(Engine::Answered done)
{
    m_engine->ask(requests::Stop{}, [this, done = std::move(done)](const Result &result) {
        if (result) {
            m_deaths = 0;
            m_resume.reset();
            setState(State::Stopped);
        }
        done(result);
    });
}

void Context::speedSet(const pps::Message &message)
{
    const auto speed = parseSpeed(message.number("speed", -1), isRecording());
    if (!m_input) {
        finish(noInput());
        return;
    }
    if (!speed) {
        finish({ErrorCode::UnsupportedValue, "the speed is out of its range"});
        return;
    }
    m_isSpeedTaken = false;
    const auto done = [this, speed = *speed](const Result &result) {
        if (result && !m_isSpeedTaken && speed != m_speed) {
            setSpeed(speed);
        }
        finish(result);
    };
    // A medium that does not play takes any speed.
    const bool canFail = m_isOpen && m_state == State::Playing;
    if (m_isOpen) {
        m_engine->ask(SpeedChange{*speed}, canFail ? Engine::Answered(done) : Engine::Answered([](const Result &) {}));
    }
    if (!canFail) {
        done({});
    }
}

void Context::seek(const pps::Message &message)
{
    if (!m_input) {
        finish(noInput());
        return;
    }
    const auto parsed = parsePosition(message.text("position"));
    TrackPosition target =
        parsed ? TrackPosition{parsed->track.value_or(m_position.track), parsed->milliseconds} : TrackPosition{0, 0};
    if (target.track == 0 || target.track > m_total) {
        finish({ErrorCode::InvalidParameter, "there is no such position"});
        return;
    }
    if (m_isOpen) {
        m_engine->ask(requests::Seek{target}, [this, target](const Result &result) {
            if (result && m_state != State::Playing) {
                m_resume = target;
            }
            finish(result);
        });
    } else if (target.track != m_position.track && !m_hasFailed && !m_kinds.empty()) {
        m_resume = target;
        reopen(Purpose::GoOn, [this](const Result &result) { finish(result); });
    } else {
        if (target.track != m_position.track) {
            m_folder.setQueue(target.track, m_total);
        }
        if (const int64_t duration = kindOf(target.track).duration; duration > 0) {
            target.milliseconds = std::min(target.milliseconds, duration);
        }
        m_resume = m_position = target;
        m_folder.setPosition(target.milliseconds);
        finish({});
    }
}

void Context::setState(State state, const std::optional<Folder::Ending> &ending)
{
    m_state = state;
    m_hasEnded = ending.has_value();
    m_hasFailed = ending && ending->code != ErrorCode::None;
    if (state != State::Playing && m_recording) {
        if (m_hasFailed) {
            m_recording->giveUp();
        }
        m_recording.reset();
    }
    watchEngine();
    if (m_engine) {
        m_engine->setCompleting(state == State::Playing && isRecording());
    }
    // A recorder that is ready must not look like one that was reset.
    const bool isReadyRecorder = state == State::Stopped && isRecording();
    m_folder.setState(state, m_speed,
                      isReadyRecorder && !ending ? Folder::Ending{ErrorCode::None, m_position} : ending);
}

void Context::setSpeed(Speed speed)
{
    m_speed = speed;
    m_folder.setSpeed(speed);
    watchEngine();
}

Context::Kind Context::kindOf(unsigned track) const
{
    const auto found = m_kinds.find(track);
    return found == m_kinds.end() ? Kind() : found->second;
}

/** Whether the journal and the position are enough to go on with another engine. */
bool Context::canPark() const
{
    if (!m_input || !m_isOpen) {
        return m_engine != nullptr;
    }
    const Kind kind = kindOf(m_position.track);
    if (m_hasFailed || isRecording() || !kind.isSeekable) {
        return false;
    }
    const bool isPictureShown = (kind.isFilm && m_journal.hasVideo()) || m_journal.hasCaptions();
    return m_state == State::Stopped || (m_state == State::Playing && m_speed.isPaused() && !isPictureShown);
}

/** A context that rests gives its engine back sooner or later. */
void Context::updateParking()
{
    if (!m_isBusy && canPark()) {
        m_parking.add(*this, m_owner);
    } else {
        m_parking.remove(*this);
    }
}

void Context::park()
{
    if (!m_isBusy && canPark()) {
        if (m_isOpen) {
            resumeAtTrackStart();
        }
        m_isOpen = false;
        m_engine.reset();
    }
}

/** A paused engine is left to sleep: whether it lives shows with the next request. */
void Context::watchEngine()
{
    if (m_engine) {
        m_engine->setWatched(m_state == State::Playing && !m_speed.isPaused());
    }
    updateParking();
}

} // namespace voro::renderer
