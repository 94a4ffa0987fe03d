#pragma once

#include "Link.h"
#include "Player.h"
#include "Recorder.h"

namespace voro::renderer {

/** Passes the service's requests to the player or the recorder, and its answers and reports back. */
class Commands {
public:
    /** False when the worker was not started by the daemon. */
    bool start();

private:
    void handle(const pps::Message &message);
    Result handleNow(const std::string &command, const pps::Message &message);
    void open(const pps::Message &message);
    void openRecorder(const pps::Message &message);
    void record(const std::string &command, const pps::Message &message);
    static Settings read(const pps::Message &message, Settings settings);
    void reply(const std::string &command, int64_t id, const Result &result);

    Link m_link;
    Player m_player{[this](const std::string &lines) { m_link.send(lines); }};
    Recorder m_recorder{[this](const std::string &lines) { m_link.send(lines); }};
};

} // namespace voro::renderer
