#include "Context.h"

#include <renderer/common/Fields.h>

#include <limits>
#include <utility>

namespace voro::renderer {

namespace {

Result noRoom()
{
    return {ErrorCode::ResourceUnavailable, "there is no room for the parameters"};
}

/** The output that a command names; -1 for what cannot be one. */
int outputOf(const pps::Message &message)
{
    const int64_t output = message.number("output", -1);
    return output < 0 || output > std::numeric_limits<int>::max() ? -1 : static_cast<int>(output);
}

} // namespace

void Context::outputAttach(const pps::Message &message)
{
    const std::string url = message.text("url");
    const auto type = parseName<OutputType>(message.text("type"));
    if (!type) {
        finish({ErrorCode::InvalidParameter, "unknown output type " + message.text("type")});
    } else if (type == OutputType::File) {
        completeRecording([this, url] { attachFile(url); });
    } else {
        int id = -1;
        const Result result = m_journal.attachOutput(url, *type, parseFields<Session>(message), id);
        outputAttached(result, id);
    }
}

void Context::attachFile(const std::string &url)
{
    const std::string path = RecordingFile::pathOf(url);
    const auto key = std::make_shared<std::string>();
    waitForDisk(
        path, [view = m_view, path, key] { return RecordingFile::inspect(*view, path, *key); },
        [this, url, path, key](const Result &inspected) {
            int id = -1;
            const Result result = inspected ? m_journal.attachFile(url, path, *key, id) : inspected;
            outputAttached(result, id);
        });
}

void Context::outputAttached(const Result &result, int id)
{
    if (!result) {
        finish(result);
        return;
    }
    std::string line;
    pps::appendNumber(line, "output", id);
    if (!m_isOpen || !m_journal.isScreen(id)) {
        applySettings(line);
        return;
    }
    // Only the engine finds out whether it can draw there.
    sendSettings([this, id, line](const Result &answered) {
        const bool isRefused = answered.code == ErrorCode::OutputUnavailable;
        if (isRefused) {
            m_journal.detachOutput(id);
        }
        const auto answer = [this, problem = isRefused ? answered : Result(), line = isRefused ? std::string() : line] {
            finish(problem, line);
        };
        if (m_isOpen) {
            answer();
        } else {
            reopen(Purpose::GoOn, [answer](const Result &) { answer(); });
        }
    });
}

/** Has done outside the event loop what may wait for the disk with that file. */
void Context::waitForDisk(const std::string &path, DiskJob::Work work, DiskJob::Finished done)
{
    m_disk = std::make_unique<DiskJob>(m_broker, m_owner, std::move(work),
                                       Result(ErrorCode::OutputUnavailable, path + ": the disk does not answer"),
                                       std::move(done));
}

void Context::outputDetach(const pps::Message &message)
{
    const int output = outputOf(message);
    const auto detach = [this, output] {
        const Result result = m_journal.detachOutput(output);
        if (result) {
            applySettings();
        } else {
            finish(result);
        }
    };
    if (m_journal.isFile(output)) {
        completeRecording(detach);
    } else {
        detach();
    }
}

/** Goes on when nothing is written into the file any more. */
void Context::completeRecording(const std::function<void()> &next)
{
    if (isRecording() && m_state == State::Playing) {
        stopPlaying([next](const Result &) { next(); });
    } else {
        next();
    }
}

void Context::outputParameters(const pps::Message &message)
{
    setParameters(message,
                  [&](const Parameters &parameters) { return m_journal.setOutput(outputOf(message), parameters); });
}

void Context::contextParameters(const pps::Message &message)
{
    setParameters(message, [&](const Parameters &parameters) { return m_journal.setContext(parameters); });
}

void Context::inputParameters(const pps::Message &message)
{
    setParameters(message, [&](const Parameters &parameters) {
        const Result result = m_journal.setInput(parameters);
        return !result || m_folder.setInput(parameters) ? result : noRoom();
    });
}

void Context::trackParameters(const pps::Message &message)
{
    const int64_t track = message.number("track", -1);
    if (track < 0 || track > (m_input ? m_total : MostTracks)) {
        finish({ErrorCode::InvalidParameter, "there is no such track"});
        return;
    }
    setParameters(message, [this, track = static_cast<unsigned>(track)](const Parameters &parameters) {
        const Result result = m_journal.setTrack(track, parameters);
        return !result || track == 0 || m_folder.setTrackParameters(track, parameters) ? result : noRoom();
    });
}

/** Takes over the parameters of a command, and sends the settings to an engine that plays. */
void Context::setParameters(const pps::Message &message, const std::function<Result(const Parameters &)> &take)
{
    const auto parameters = Parameters::fromText(message.text("dat"));
    const Result result =
        parameters ? take(*parameters) : Result(ErrorCode::InvalidParameter, "the parameters cannot be read");
    if (result) {
        applySettings();
    } else {
        finish(result);
    }
}

/** Finishes a command that changed settings. */
void Context::applySettings(const std::string &lines)
{
    if (!m_isOpen || m_journal.settings() == m_settings) {
        finish({}, lines);
    } else if (doesReach()) {
        // An engine takes whatever was checked here, and before all that follows.
        sendSettings([](const Result &) {});
        finish({}, lines);
    } else {
        reopen(Purpose::GoOn, [this, lines](const Result &) { finish({}, lines); });
    }
}

/** Whether the engine reaches all that it needs now. */
bool Context::doesReach() const
{
    const Reach reach = neededReach(*m_input);
    return (m_reach.network || !reach.network) && (m_reach.windows || !reach.windows);
}

void Context::sendSettings(Engine::Answered done)
{
    if (!doesReach()) {
        reopen(Purpose::Trial, std::move(done));
        return;
    }
    m_settings = m_journal.settings();
    m_engine->setFrameQueues(m_journal.frameQueues());
    m_engine->ask(requests::Set{m_settings}, std::move(done));
}

} // namespace voro::renderer
