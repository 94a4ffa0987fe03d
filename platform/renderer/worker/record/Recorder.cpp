#include "Recorder.h"

#include "AudioSource.h"

#include <pps/Log.h>

#include <utility>

namespace voro::renderer {

namespace {

/** How long a source may take to give its first samples. */
constexpr guint StartTimeout = 4'000;
/** How long the rest of a recording may take to be written. */
constexpr guint FinishTimeout = 10'000;

/** The encoder of a format; null when this machine has none. */
GstElement *makeEncoder(const RecordingFormat &format, Result &result)
{
    GError *raw = nullptr;
    GstElement *encoder = gst_parse_bin_from_description_full(std::string(format.encoder).c_str(), TRUE, nullptr,
                                                              GST_PARSE_FLAG_FATAL_ERRORS, &raw);
    const Owned<GError> error(raw);
    if (error) {
        result = {ErrorCode::UnsupportedMediaType, error->message};
    }
    return encoder;
}

} // namespace

Result Recorder::open(const requests::Open &request)
{
    const auto &[channels, extension, role] = request.recording;
    m_isPaused = request.speed.isPaused();
    const RecordingFormat *format = recordingFormat(extension);
    if (!format) {
        return {ErrorCode::UnsupportedMediaType, "unknown format " + extension};
    }
    Result result;
    GstElement *encoder = format->encoder.empty() ? nullptr : makeEncoder(*format, result);
    GstElement *source = result ? makeAudioSource(role) : nullptr;
    if (!source) {
        return result ? Result(ErrorCode::SourceUnavailable, "there is no source of sound") : result;
    }
    m_failure = {};
    m_phase = Phase::Ready;
    m_pipeline = std::make_unique<RecordingPipeline>(
        RecordingPipeline::Events{.begun = [this] { onBegun(); },
                                  .ended = [this] { onEnded(); },
                                  .failed = [this](const Result &problem) { onFailed(problem); }},
        source, encoder, *format, channels);
    apply(request.settings);
    if (const Result problem = m_pipeline->prepare(); !problem) {
        m_pipeline.reset();
        return problem;
    }
    m_reports.reset();
    m_reports.track(1, "audio:default", {});
    m_reports.queue(1, 1);
    reportStatus();
    return {};
}

void Recorder::start(pps::Fd file, Answer answer)
{
    if (m_phase != Phase::Ready || !file.isValid()) {
        answer({ErrorCode::InvalidState, "there is no file, or it is finished"});
        return;
    }
    m_answer = std::move(answer);
    m_phase = Phase::Starting;
    setTimeout(StartTimeout);
    m_pipeline->start(std::move(file), !m_isPaused);
}

void Recorder::setPaused(bool isPaused)
{
    m_isPaused = isPaused;
    if (m_phase == Phase::Running) {
        m_pipeline->gate().setOpen(!isPaused);
        reportStatus();
    }
}

void Recorder::apply(const Settings &settings)
{
    m_interval = settings.interval;
    m_pipeline->gate().setLimit(settings.limit);
    if (m_statusTimer.isActive()) {
        restartStatusTimer();
    }
}

void Recorder::stop(Answer answer)
{
    m_answer = std::move(answer);
    if (m_phase == Phase::Running || m_phase == Phase::Starting) {
        finish();
    } else if (m_phase != Phase::Finishing) {
        this->answer({});
    }
}

void Recorder::close(Answer answer)
{
    stop([this, answer = std::move(answer)](const Result &result) {
        m_pipeline.reset();
        answer(result);
    });
}

// Reports of the pipeline

void Recorder::onBegun()
{
    if (m_phase == Phase::Starting) {
        m_phase = Phase::Running;
        m_timeout.reset();
        restartStatusTimer();
        reportStatus();
        answer({});
    }
}

void Recorder::onEnded()
{
    const Result hasEnded(ErrorCode::SourceUnavailable, "the source of sound has ended");
    if (m_phase == Phase::Running) {
        // All of it has gone through already.
        m_failure = hasEnded;
        complete();
    } else if (m_phase == Phase::Finishing) {
        complete();
    } else {
        onFailed(hasEnded);
    }
}

void Recorder::onFailed(const Result &result)
{
    switch (m_phase) {
    case Phase::Starting:
        m_phase = Phase::Ready;
        m_timeout.reset();
        m_pipeline->abandon();
        answer(result);
        break;
    case Phase::Running:
        log::warn(log::Category::Worker, "the recording ends: %s", result.text.c_str());
        m_failure = result;
        finish();
        break;
    case Phase::Finishing:
        if (m_failure) {
            m_failure = result;
        }
        // The rest will not come any more.
        complete();
        break;
    case Phase::Ready:
    case Phase::Finished:
        break;
    }
}

gboolean Recorder::onTimeout(gpointer self)
{
    auto *recorder = static_cast<Recorder *>(self);
    recorder->m_timeout.forget();
    recorder->onFailed(recorder->m_phase == Phase::Starting
                           ? Result(ErrorCode::SourceUnavailable, "the source of sound gives nothing")
                           : Result(ErrorCode::Write, "the file cannot be completed"));
    return G_SOURCE_REMOVE;
}

// Ending

void Recorder::finish()
{
    m_phase = Phase::Finishing;
    m_statusTimer.reset();
    setTimeout(FinishTimeout);
    m_pipeline->finish();
}

/** The file is closed before anybody hears of it. */
void Recorder::complete()
{
    m_phase = Phase::Finished;
    m_timeout.reset();
    m_pipeline->release();
    reportStatus();
    if (!m_failure) {
        m_reports.failed(m_failure, 1, position());
    }
    answer(m_failure);
}

void Recorder::answer(const Result &result)
{
    if (m_answer) {
        std::exchange(m_answer, nullptr)(result);
    }
}

void Recorder::setTimeout(guint milliseconds)
{
    m_timeout.reset(g_timeout_add(milliseconds, onTimeout, this));
}

// Reports

int64_t Recorder::position() const
{
    return m_pipeline->gate().position();
}

void Recorder::restartStatusTimer()
{
    m_statusTimer.reset(g_timeout_add(m_interval, onStatusDue, this));
}

gboolean Recorder::onStatusDue(gpointer self)
{
    static_cast<Recorder *>(self)->reportStatus();
    return G_SOURCE_CONTINUE;
}

void Recorder::reportStatus()
{
    const bool isRunning = m_phase == Phase::Running;
    const int level = isRunning ? m_pipeline->gate().takeLevel() : 0;
    m_reports.send(events::Status{position(), 100, isRunning ? BufferStatus::Playing : BufferStatus::Idle, level});
}

} // namespace voro::renderer
