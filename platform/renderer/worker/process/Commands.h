#pragma once

#include "HandedFiles.h"
#include "Link.h"

#include <renderer/worker/player/Player.h>
#include <renderer/worker/record/Recorder.h>
#include <renderer/worker/video/FrameChannel.h>

namespace voro::renderer {

/** Passes the service's requests to the player or the recorder, and its answers and reports back. */
class Commands {
public:
    Commands(HandedFiles &handed, Playback &playback) : m_handed(handed), m_playback(playback) {}
    /** False when the worker was not started by the daemon. */
    bool start();

private:
    using Answer = Player::Answer;

    void handle(const pps::Message &message);
    void ping(int64_t id);
    void open(const requests::Open &request, int64_t id, const Answer &answer);
    Result play(const Request &request);
    void record(const Request &request, const Answer &answer);
    Result apply(const Settings &settings);
    void end();
    void armSettledTimer();
    static gboolean onSettled(gpointer self);
    static gboolean onSpare(gpointer self);
    static gboolean onFile(gint fd, GIOCondition condition, gpointer self);
    void takeFiles();

    HandedFiles &m_handed;
    Link m_link;
    MainLoopSource m_fileSource;
    /** Until the first request. */
    MainLoopSource m_spareSource;
    /** Runs for a while from a request on. */
    MainLoopSource m_settledTimer;
    Medium m_medium;
    /** For the next recording. */
    pps::Fd m_file;
    FrameChannels m_frames;
    Playback &m_playback;
    Probe m_probe;
    Player m_player{m_playback, m_probe, [this](const Event &event) { m_link.send(toText(event)); }};
    Recorder m_recorder{[this](const Event &event) { m_link.send(toText(event)); }};
};

} // namespace voro::renderer
