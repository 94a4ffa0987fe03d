#pragma once

#include "RecordingPipeline.h"

#include <renderer/worker/player/Reports.h>

#include <functional>
#include <memory>
#include <string>

namespace voro::renderer {

/** Records the audio input into a file as the service asks, and reports what happens. */
class Recorder {
public:
    using Answer = std::function<void(const Result &)>;
    explicit Recorder(Reports::Send send) : m_reports(std::move(send)) {}

    /** Finds out whether there is a source and an encoder. */
    Result open(const requests::Open &request);
    /** Begins to record into a file; the answer comes when the source gives something, or none. */
    void start(pps::Fd file, Answer answer);
    void setPaused(bool isPaused);
    void apply(const Settings &settings);
    /** Ends the recording; the answer comes when the file is complete. */
    void stop(Answer answer);
    /** Likewise, and lets go of the source. */
    void close(Answer answer);
    bool isOpen() const { return m_pipeline != nullptr; }
    /** How much is recorded, in milliseconds; only while it is open. */
    int64_t position() const;

private:
    enum class Phase {
        Ready,
        Starting,
        Running,
        /** The rest of the recording is being written. */
        Finishing,
        Finished,
    };

    void onBegun();
    void onEnded();
    void onFailed(const Result &result);
    static gboolean onTimeout(gpointer self);
    static gboolean onStatusDue(gpointer self);

    void finish();
    void complete();
    void setTimeout(guint milliseconds);
    void restartStatusTimer();
    void reportStatus();
    void answer(const Result &result);

    Reports m_reports;
    guint m_interval = Settings().interval;
    bool m_isPaused = false;
    std::unique_ptr<RecordingPipeline> m_pipeline;
    Phase m_phase = Phase::Ready;
    Answer m_answer;
    /** Why it is being ended, when nobody asked for that. */
    Result m_failure;
    MainLoopSource m_statusTimer;
    MainLoopSource m_timeout;
};

} // namespace voro::renderer
