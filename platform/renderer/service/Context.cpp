#include "Context.h"

#include <pps/Log.h>
#include <renderer/common/Medium.h>
#include <renderer/common/Protocol.h>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace voro::renderer {

namespace {

constexpr int MostDeaths = 10;
/** An application that does not wait for its answers is not served any more. */
constexpr size_t MostWaiting = 256;
constexpr int SlowestSpeed = 250;
constexpr int FastestSpeed = 4000;
constexpr int NormalSpeed = 1000;

bool isInputType(const std::string &type)
{
    return type == "autolist" || type == "playlist" || type == "track";
}

Result noInput()
{
    return {ErrorCode::InvalidState, "there is no input"};
}

Result noRoom()
{
    return {ErrorCode::ResourceUnavailable, "there is no room for the parameters"};
}

/** Whether a medium can be played at that speed. A recording either goes on or pauses. */
bool isSpeed(int64_t speed, bool isRecording)
{
    if (isRecording) {
        return speed == 0 || speed == NormalSpeed;
    }
    const bool isInRange = speed >= -FastestSpeed && speed <= FastestSpeed;
    return isInRange && (speed == 0 || speed <= -SlowestSpeed || speed >= SlowestSpeed);
}

/** The output that a command names; -1 for what cannot be one. */
int outputOf(const pps::Message &message)
{
    const int64_t output = message.number("output", -1);
    return output < 0 || output > std::numeric_limits<int>::max() ? -1 : static_cast<int>(output);
}

/** The attribute lines of an event that are a track's metadata. */
std::string metadataLines(std::string_view lines)
{
    std::string result;
    pps::LineReader reader(lines);
    for (pps::Line line; reader.next(line);) {
        const bool isOurs = line.kind == pps::Line::Kind::Attribute && line.name != "msg" && line.name != "track";
        if (isOurs && line.mark == 0 && result.size() + line.whole.size() < MaximumMetadata) {
            result.append(line.whole).append("\n");
        }
    }
    return result;
}

} // namespace

Context::Context(pps::Broker &broker, EngineSource &engines, std::string path, pid_t owner, int parkingDelay)
    : m_broker(broker),
      m_engines(engines),
      m_owner(owner),
      m_view(FileView::of(owner)),
      m_folder(broker, std::move(path), owner),
      m_isServed(broker.serve(m_folder.path() + "/control", this)),
      m_parkingDelay(parkingDelay),
      m_parking(broker, [this] { park(); })
{}

Context::~Context()
{
    if (m_isServed) {
        m_broker.unserve(m_folder.path() + "/control");
    }
}

void Context::clientOpened(pps::ClientId client, const pps::Peer &peer)
{
    if (m_owner != pps::Accounts::Services && peer.process != m_owner) {
        m_broker.disconnect(client);
    }
}

void Context::clientMessage(pps::ClientId client, std::string_view text)
{
    pps::Message message;
    if (!message.parse(text) || !message.has("msg")) {
        return;
    }
    size_t cost = sizeof(Command) + text.size();
    cost += message.entries().size() * sizeof(pps::Message::Entry);
    auto charge = m_broker.accounts().take(m_owner, pps::Resource::Memory, cost);
    if (m_commands.size() >= MostWaiting || !charge.isValid()) {
        m_broker.disconnect(client);
        return;
    }
    m_commands.push_back({client, std::move(charge), std::move(message)});
    runNext();
}

void Context::clientClosed(pps::ClientId client)
{
    // What is under way is finished; what waited is not begun.
    const auto waiting = m_commands.begin() + (m_isBusy ? 1 : 0);
    m_commands.erase(std::remove_if(waiting, m_commands.end(),
                                    [client](const Command &command) { return command.client == client; }),
                     m_commands.end());
}

Context::Handler Context::handlerOf(std::string_view command)
{
    struct Entry {
        std::string_view name;
        Handler handler;
    };
    static constexpr std::array Handlers{
        Entry{"context_parameters", &Context::contextParameters},
        Entry{"input_attach", &Context::inputAttach},
        Entry{"input_detach", &Context::inputDetach},
        Entry{"input_parameters", &Context::inputParameters},
        Entry{"output_attach", &Context::outputAttach},
        Entry{"output_detach", &Context::outputDetach},
        Entry{"output_parameters", &Context::outputParameters},
        Entry{"play", &Context::play},
        Entry{"seek", &Context::seek},
        Entry{"speed_set", &Context::speedSet},
        Entry{"stop", &Context::stop},
        Entry{"track_parameters", &Context::trackParameters},
    };
    const auto found =
        std::find_if(Handlers.begin(), Handlers.end(), [command](const Entry &entry) { return entry.name == command; });
    return found == Handlers.end() ? nullptr : found->handler;
}

void Context::runNext()
{
    // A command that is finished at once comes back here; the loop that began it goes on.
    if (std::exchange(m_isRunning, true)) {
        return;
    }
    while (!m_isBusy && !m_commands.empty()) {
        m_isBusy = true;
        // It stays in front until it is finished.
        const pps::Message message = m_commands.front().message;
        if (const Handler handler = handlerOf(message.text("msg"))) {
            begin(handler, message);
        } else {
            finish({ErrorCode::InvalidParameter, "unknown command " + message.text("msg")});
        }
    }
    m_isRunning = false;
}

/** Begins a command, with an engine if that has been given back and the command cannot do without. */
void Context::begin(Handler handler, const pps::Message &message)
{
    constexpr std::array<Handler, 4> NeedEngine{&Context::seek, &Context::speedSet, &Context::stop,
                                                &Context::outputAttach};
    const bool isParked = m_state == State::Playing && !m_isOpen;
    if (!isParked || std::ranges::find(NeedEngine, handler) == NeedEngine.end()) {
        (this->*handler)(message);
        return;
    }
    reopen(Purpose::GoOn, [this, handler, message](const Result &result) {
        // What cannot go on has stopped.
        if (result || (handler == &Context::stop && m_state == State::Stopped)) {
            (this->*handler)(message);
        } else {
            finish(result);
        }
    });
}

void Context::finish(const Result &result, std::string_view lines)
{
    const Command command = std::move(m_commands.front());
    m_commands.pop_front();
    m_isBusy = false;
    updateParking();
    m_broker.setReturn(command.client, returnText());
    m_broker.send(command.client,
                  answer(command.message.text("msg"), command.message.number("id"), result).append(lines));
    runNext();
}

// The return

std::string Context::returnText() const
{
    std::string lines;
    pps::appendNumber(lines, "speed", m_speed);
    lines += m_journal.toText();
    if (m_input) {
        pps::appendText(lines, "url", m_input->url);
        pps::appendText(lines, "type", m_input->type);
    }
    return lines;
}

void Context::restore(const pps::Message &message)
{
    m_journal.restore(message);
    m_folder.setInput(m_journal.input());
    for (const auto &[track, parameters] : m_journal.tracks()) {
        if (track > 0) {
            m_folder.setTrackParameters(track, parameters);
        }
    }
    const Journal::Input input{message.text("url"), message.text("type")};
    const int64_t speed = message.number("speed", NormalSpeed);
    m_speed = isSpeed(speed, input.isRecording()) ? static_cast<int>(speed) : NormalSpeed;
    if (input.url.empty() || input.url.size() > MaximumUrl || !isInputType(input.type)
        || !m_journal.checkInput(input)) {
        return;
    }
    const Folder::Will will = m_folder.restore(message.text("will"), m_speed);
    m_input = input;
    m_deadlyUrl = Medium(input.url).uri();
    m_state = State::Stopped;
    m_hasEnded = true;
    m_total = will.total;
    m_position = will.ending.position;
    if (will.ending.code != ErrorCode::None) {
        m_resume = m_position;
    }
}

// Outputs and parameters

void Context::outputAttach(const pps::Message &message)
{
    const std::string url = message.text("url");
    if (message.text("type") == "file") {
        completeRecording([this, url] { attachFile(url); });
        return;
    }
    int id = -1;
    const Result result = m_journal.attachOutput(url, message.text("type"), Session::of(message), id);
    outputAttached(result, id);
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
    tellSettings([this, id, line](const Result &told) {
        const bool isRefused = told.code == ErrorCode::OutputUnavailable;
        if (isRefused) {
            m_journal.detachOutput(id);
        }
        const auto answer = [this, problem = isRefused ? told : Result(), line = isRefused ? std::string() : line] {
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
void Context::waitForDisk(const std::string &path, DiskJob::Work work, DiskJob::Done done)
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

/** Has the parameters of a command taken over, and tells the engine that plays what holds now. */
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
    if (!m_isOpen || m_journal.settingLines() == m_settings) {
        finish({}, lines);
    } else if (doesReach()) {
        // An engine takes whatever was checked here, and before all that follows.
        tellSettings([](const Result &) {});
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

void Context::tellSettings(Engine::Done done)
{
    if (!doesReach()) {
        reopen(Purpose::Trial, std::move(done));
        return;
    }
    m_settings = m_journal.settingLines();
    m_engine->setFrameQueues(m_journal.frameQueues());
    m_engine->ask("set", m_settings, std::move(done));
}

// The input

void Context::inputAttach(const pps::Message &message)
{
    const Journal::Input input{message.text("url"), message.text("type")};
    if (input.url.size() > MaximumUrl || !isInputType(input.type)) {
        refuseInput({ErrorCode::InvalidParameter, "the URL is too long or the type unknown"});
    } else if (const Result problem = m_journal.checkInput(input); !problem) {
        refuseInput(problem);
    } else if (m_input) {
        closeMedium([this, input](const Result &) { attach(input); });
    } else {
        attach(input);
    }
}

void Context::attach(const Journal::Input &input)
{
    const std::string url = Medium(input.url).uri();
    if (url != m_deadlyUrl) {
        m_deadlyUrl = url;
        m_deaths = 0;
    }
    if (m_deaths >= MostDeaths) {
        refuseInput({ErrorCode::ResourceCorrupted, "the medium has ended too many workers"});
        return;
    }
    if (RecordingFile *file = m_journal.file(); file && !file->take()) {
        refuseInput({ErrorCode::ResourceUnavailable, "the file is being recorded into"});
        return;
    }
    m_position = {};
    m_resume.reset();
    m_isListFar = false;
    m_kinds.clear();
    open(input, [this, input](const Result &result) {
        if (result) {
            m_isOpen = true;
            m_input = input;
            const Parameters first = m_journal.firstTrack(input.type);
            m_journal.setTrack(1, first);
            m_folder.setTrackParameters(1, first);
            setState(State::Stopped);
            finish(result);
            return;
        }
        if (m_total > 0) {
            // The worker had told of it before it died.
            m_folder.clearMedium(m_position.track);
            m_total = 0;
        }
        refuseInput(result);
    });
}

/** Finishes an attach that failed. A recorder that has no input keeps no file from others. */
void Context::refuseInput(const Result &problem)
{
    if (RecordingFile *file = m_journal.file(); file && !m_input) {
        file->release();
    }
    finish(problem);
}

/** Has an engine open the input with all that the context was given: one that reaches what it needs and no more. */
void Context::open(const Journal::Input &input, Engine::Done done)
{
    const Reach reach = neededReach(input);
    if (m_engine && m_reach != reach) {
        m_engine.reset();
    }
    if (!m_engine) {
        m_reach = reach;
        m_engine = m_engines.start(*this, m_owner, reach);
    }
    if (!m_engine) {
        done({ErrorCode::ResourceUnavailable, "the process plays too much at once"});
        return;
    }
    m_opening = input;
    m_opened = std::move(done);
    m_settings = m_journal.settingLines();
    m_engine->setFrameQueues(m_journal.frameQueues());
    m_isSilent = false;
    m_engine->ask("open", m_journal.openLines(input, m_speed, m_resume), [this](const Result &result) {
        setSilent(m_isSilent);
        std::exchange(m_opened, nullptr)(result);
    });
}

Reach Context::neededReach(const Journal::Input &input) const
{
    Reach reach = m_journal.reachFor(input);
    reach.network |= m_isListFar;
    return reach;
}

/** Has the next engine begin with the track that is shown. */
void Context::keepTrack()
{
    if (!m_resume && !m_hasEnded) {
        m_resume = TrackPosition{m_position.track, 0};
    }
}

/**
 * Goes on with an engine that begins where the last one was. When it does not, a context that plays has stopped; but a
 * trial that fails, and a lack of engines, leave it as it is.
 */
void Context::reopen(Purpose purpose, Engine::Done done)
{
    if (m_state == State::Playing) {
        m_resume = TrackPosition{m_position.track, kindOf(m_position.track).isSeekable ? m_position.milliseconds : 0};
    } else {
        keepTrack();
    }
    m_isOpen = false;
    open(*m_input, [this, purpose, done = std::move(done)](const Result &result) {
        m_isOpen = static_cast<bool>(result);
        const auto goOn = [this, done](const Result &played) {
            if (!played && m_state == State::Playing) {
                setState(State::Stopped, Folder::Ending{played.code, m_position});
            }
            done(played);
        };
        if (m_isOpen && m_state == State::Playing) {
            m_engine->ask("play", {}, goOn);
        } else if (m_isOpen || purpose == Purpose::Trial || !m_engine) {
            done(result);
        } else {
            goOn(result);
        }
    });
}

void Context::inputDetach(const pps::Message &)
{
    if (m_input) {
        closeMedium([this](const Result &) {
            finish({});
            if (m_onIdle) {
                m_onIdle();
            }
        });
    } else {
        finish({});
    }
}

/** Shows that there is no medium, when the engine has nothing more to say about it. */
void Context::closeMedium(Engine::Done done)
{
    const auto closed = [this, done = std::move(done)](const Result &) {
        m_isOpen = false;
        m_resume.reset();
        m_folder.clearMedium(m_position.track);
        m_total = 0;
        m_position = {};
        setState(State::Idle);
        done({});
    };
    // From here on nothing that happens to the worker is a matter of this medium.
    m_input.reset();
    if (m_isOpen) {
        m_engine->ask("close", {}, closed);
    } else {
        closed({});
    }
}

// Playing

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
        finish({ErrorCode::ResourceCorrupted, "the medium has ended too many workers"});
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
    m_engine->ask("play", {}, [this](const Result &result) {
        showPlaying(result);
        finish(result);
    });
}

void Context::startRecording(const std::shared_ptr<OpenRecording> &recording, const Result &opened)
{
    if (!opened) {
        letGo(recording, opened);
        return;
    }
    // The worker may have died meanwhile.
    if (!m_isOpen || !m_engine->pass(recording->descriptor())) {
        letGo(recording, {ErrorCode::Internal, "the worker does not take the file"});
        return;
    }
    m_engine->ask("play", {}, [this, recording](const Result &result) {
        if (result) {
            recording->keep();
            m_journal.file()->setUsed();
        }
        showPlaying(result);
        letGo(recording, result);
    });
}

/** Finishes a play when the daemon has nothing to do with the file any more. */
void Context::letGo(const std::shared_ptr<OpenRecording> &recording, const Result &result)
{
    const auto work = [recording] {
        recording->letGo();
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

void Context::stopPlaying(Engine::Done done)
{
    m_engine->ask("stop", {}, [this, done = std::move(done)](const Result &result) {
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
    const int64_t speed = message.number("speed", -1);
    if (!m_input) {
        finish(noInput());
        return;
    }
    if (!isSpeed(speed, isRecording())) {
        finish({ErrorCode::UnsupportedValue, "the speed is out of its range"});
        return;
    }
    m_isSpeedTaken = false;
    const auto done = [this, speed = static_cast<int>(speed)](const Result &result) {
        if (result && !m_isSpeedTaken && speed != m_speed) {
            setSpeed(speed);
        }
        finish(result);
    };
    // What does not play takes any speed.
    const bool canFail = m_isOpen && m_state == State::Playing;
    if (m_isOpen) {
        std::string line;
        pps::appendNumber(line, "speed", speed);
        m_engine->ask("speed", line, canFail ? Engine::Done(done) : Engine::Done([](const Result &) {}));
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
        std::string lines;
        pps::appendNumber(lines, "track", target.track);
        pps::appendNumber(lines, "position", target.milliseconds);
        m_engine->ask("seek", lines, [this, target](const Result &result) {
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

const char *Context::nameOf(State state)
{
    switch (state) {
    case State::Idle:
        return "idle";
    case State::Stopped:
        return "stopped";
    case State::Playing:
        return "playing";
    }
    return "";
}

void Context::setState(State state, const std::optional<Folder::Ending> &ending)
{
    m_state = state;
    m_hasEnded = ending.has_value();
    m_hasFailed = ending && ending->code != ErrorCode::None;
    watchEngine();
    if (m_engine) {
        m_engine->setCompleting(state == State::Playing && isRecording());
    }
    // A recorder that is ready must not look like one that was reset.
    const bool isReadyRecorder = state == State::Stopped && isRecording();
    m_folder.setState(nameOf(state), m_speed,
                      isReadyRecorder && !ending ? Folder::Ending{ErrorCode::None, m_position} : ending);
}

void Context::setSpeed(int speed)
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
    const Kind kind = kindOf(m_position.track);
    if (!m_isOpen || m_hasFailed || isRecording() || !kind.isSeekable) {
        return false;
    }
    const bool isPictureShown = (kind.isFilm && m_journal.hasVideo()) || m_journal.hasCaptions();
    return m_state == State::Stopped || (m_state == State::Playing && m_speed == 0 && !isPictureShown);
}

/** A context that rests gives its engine back after a while. */
void Context::updateParking()
{
    if (canPark()) {
        m_parking.start(m_parkingDelay);
    } else {
        m_parking.stop();
    }
}

void Context::park()
{
    if (!m_isBusy && canPark()) {
        keepTrack();
        m_isOpen = false;
        m_engine.reset();
    }
}

/** A paused engine is left to sleep: whether it lives shows with the next request. */
void Context::watchEngine()
{
    if (m_engine) {
        m_engine->setWatched(m_state == State::Playing && m_speed != 0);
    }
    updateParking();
}

// What the engine says

void Context::setSilent(bool isSilent)
{
    m_isSilent = isSilent;
    if (m_folder.setSilent(isSilent)) {
        log::warn(log::Category::Renderer, "%s: no sound server answers; playing without sound", path().c_str());
    }
}

void Context::engineEvent(const pps::Message &event, std::string_view lines)
{
    const std::string name = event.text("msg");
    if (name == "status") {
        report(event);
    } else if (name == "track") {
        const int64_t track = event.number("track", 1);
        if (track >= 1 && track <= MostTracks) {
            m_folder.setTrack(static_cast<unsigned>(track), metadataLines(lines));
            const Kind kind{.isFilm = event.number("md_video_width") > 0,
                            .isSeekable = event.text("md_title_seekable") == "true",
                            .duration = event.number("md_title_duration")};
            m_kinds[static_cast<unsigned>(track)] = kind;
            if (kind.isFilm && m_journal.hasVideo()) {
                m_engines.expectFilms();
            }
        }
    } else if (name == "queue") {
        m_total = static_cast<unsigned>(std::clamp<int64_t>(event.number("total"), 0, MostTracks));
        m_position.track = static_cast<unsigned>(std::clamp<int64_t>(event.number("current", 1), 1, MostTracks));
        m_folder.setQueue(m_position.track, m_total);
        std::erase_if(m_kinds, [this](const auto &entry) {
            return entry.first + Neighbourhood < m_position.track || entry.first > m_position.track + Neighbourhood;
        });
    } else if (name == "silent") {
        setSilent(true);
    } else if (name == "speed") {
        m_isSpeedTaken = true;
        setSpeed(static_cast<int>(event.number("speed")));
    } else if (name == "ended") {
        m_deaths = 0;
        end(ErrorCode::None, event);
    } else if (name == "failed") {
        const Result result = resultOf(event);
        end(result ? ErrorCode::Internal : result.code, event);
    }
}

void Context::report(const pps::Message &status)
{
    m_position.milliseconds = status.number("position");
    m_folder.setStatus(m_position.milliseconds, status.text("bufferlevel"), status.text("bufferstatus"),
                       status.has("volume") ? status.text("volume") : std::string(Folder::NoVolume));
}

void Context::end(ErrorCode code, const pps::Message &event)
{
    if (m_state != State::Playing) {
        return;
    }
    m_position.milliseconds = event.number("position", m_position.milliseconds);
    setState(State::Stopped, Folder::Ending{code, m_position});
}

void Context::engineDied()
{
    m_engine.reset();
    m_isOpen = false;
    ++m_deaths;
    if (m_input && !m_hasEnded) {
        m_resume = m_position;
        m_folder.setStatus(m_position.milliseconds, "0/100", "idle");
        setState(State::Stopped, Folder::Ending{ErrorCode::Internal, m_position});
    }
}

void Context::engineNeedsNetwork()
{
    if (m_opened) {
        m_isListFar = true;
        open(m_opening, std::exchange(m_opened, nullptr));
    }
}

} // namespace voro::renderer
