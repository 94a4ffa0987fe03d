#pragma once

#include "HandedFiles.h"
#include "Link.h"

#include <renderer/worker/pipeline/PlaybackChooser.h>
#include <renderer/worker/player/Player.h>
#include <renderer/worker/record/Recorder.h>
#include <renderer/worker/video/FrameChannel.h>

namespace voro::renderer {

/** Passes the service's requests to the player or the recorder, and its answers and reports back. */
class Commands {
public:
    explicit Commands(HandedFiles &handed) : m_handed(handed) {}
    /** False when the worker was not started by the daemon. */
    bool start();

private:
    void handle(const pps::Message &message);
    Result handleNow(const std::string &command, const pps::Message &message);
    void ping(int64_t id);
    void open(const pps::Message &message);
    void openRecorder(const pps::Message &message);
    void end();
    void record(const std::string &command, const pps::Message &message);
    static Result findScreen(const pps::Message &message);
    Settings read(const pps::Message &message, Settings settings);
    static gboolean onFile(gint fd, GIOCondition condition, gpointer self);
    void takeFiles();
    void nameHosts(const pps::Message &message) const;
    void reply(const std::string &command, int64_t id, const Result &result);

    HandedFiles &m_handed;
    Link m_link;
    Source m_fileSource;
    Medium m_medium;
    /** What the next recording is written into. */
    pps::Fd m_file;
    FrameChannels m_frames;
    PlaybackChooser m_playback;
    Probe m_probe;
    Player m_player{m_playback, m_probe, [this](const std::string &lines) { m_link.send(lines); }};
    Recorder m_recorder{[this](const std::string &lines) { m_link.send(lines); }};
};

} // namespace voro::renderer
