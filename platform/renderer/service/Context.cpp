#include "Context.h"

#include <pps/Log.h>
#include <renderer/common/Protocol.h>

#include <algorithm>
#include <array>
#include <utility>

namespace voro::renderer {

namespace {

/** An application that does not wait for its answers is not served any more. */
constexpr size_t MostWaiting = 256;

} // namespace

Context::Context(pps::Broker &broker, EngineSource &engines, Parking &parking, std::string path, pid_t owner)
    : m_broker(broker),
      m_engines(engines),
      m_parking(parking),
      m_owner(owner),
      m_view(FileView::of(owner)),
      m_folder(broker, std::move(path), owner),
      m_isServed(broker.serve(m_folder.path() + "/control", this))
{}

Context::~Context()
{
    m_parking.remove(*this);
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
    size_t cost = sizeof(PendingCommand) + text.size();
    cost += message.attributes().size() * sizeof(pps::Message::Attribute);
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
    // The present command is finished; waiting ones are dropped.
    const auto waiting = m_commands.begin() + (m_isBusy ? 1 : 0);
    m_commands.erase(std::remove_if(waiting, m_commands.end(),
                                    [client](const PendingCommand &command) { return command.client == client; }),
                     m_commands.end());
}

Context::Handler Context::handlerOf(std::string_view command)
{
    struct NamedHandler {
        std::string_view name;
        Handler handler;
    };
    static constexpr std::array Handlers{
        NamedHandler{"context_parameters", &Context::contextParameters},
        NamedHandler{"input_attach", &Context::inputAttach},
        NamedHandler{"input_detach", &Context::inputDetach},
        NamedHandler{"input_parameters", &Context::inputParameters},
        NamedHandler{"output_attach", &Context::outputAttach},
        NamedHandler{"output_detach", &Context::outputDetach},
        NamedHandler{"output_parameters", &Context::outputParameters},
        NamedHandler{"play", &Context::play},
        NamedHandler{"seek", &Context::seek},
        NamedHandler{"speed_set", &Context::speedSet},
        NamedHandler{"stop", &Context::stop},
        NamedHandler{"track_parameters", &Context::trackParameters},
    };
    const auto found = std::find_if(Handlers.begin(), Handlers.end(),
                                    [command](const NamedHandler &entry) { return entry.name == command; });
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
        // A context that cannot go on has stopped.
        if (result || (handler == &Context::stop && m_state == State::Stopped)) {
            (this->*handler)(message);
        } else {
            finish(result);
        }
    });
}

void Context::finish(const Result &result, std::string_view lines)
{
    const PendingCommand command = std::move(m_commands.front());
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
    pps::appendNumber(lines, "speed", m_speed.thousandths);
    lines += m_journal.toText();
    if (m_input) {
        pps::appendText(lines, "url", m_input->medium.url());
        pps::appendText(lines, "type", nameOf(m_input->type));
    }
    return lines;
}

void Context::restore(const pps::Message &message)
{
    m_journal.restore(message);
    m_folder.setInput(m_journal.inputParameters());
    for (const auto &[track, parameters] : m_journal.tracks()) {
        if (track > 0) {
            m_folder.setTrackParameters(track, parameters);
        }
    }
    const auto type = parseName<InputType>(message.text("type"));
    const Journal::Input input{Medium(message.text("url")), type.value_or(InputType::AutoList)};
    m_speed = parseSpeed(message.number("speed", -1), input.isRecording()).value_or(NormalSpeed);
    if (!type || input.medium.isEmpty() || input.medium.url().size() > MaximumUrl || !m_journal.checkInput(input)) {
        return;
    }
    const Folder::Will will = m_folder.restore(message.text("will"), m_speed);
    m_input = input;
    m_deathsUri = input.medium.uri();
    m_state = State::Stopped;
    m_hasEnded = true;
    m_total = will.total;
    m_position = will.ending.position;
    if (will.ending.code != ErrorCode::None) {
        m_resume = m_position;
    }
}

// Reports of the engine

void Context::setSilent(bool isSilent)
{
    m_isSilent = isSilent;
    if (m_folder.setSilent(isSilent)) {
        log::warn(log::Category::Renderer, "%s: no sound server answers; playing without sound", path().c_str());
    }
}

void Context::engineEvent(const Event &event)
{
    std::visit(Overloaded{
                   [this](const events::Status &status) { showStatus(status); },
                   [this](const events::Track &track) { showTrack(track); },
                   [this](const events::Queue &queue) { showQueue(queue); },
                   [this](const events::Silent &) { setSilent(true); },
                   [this](const SpeedChange &taken) {
                       m_isSpeedTaken = true;
                       setSpeed(taken.speed);
                   },
                   [this](const events::Ended &ended) {
                       m_deaths = 0;
                       end(ErrorCode::None, ended.position);
                   },
                   [this](const events::Failed &failed) {
                       const ErrorCode code = codeOf(failed.error);
                       end(code == ErrorCode::None ? ErrorCode::Internal : code, failed.position);
                   },
               },
               event);
}

void Context::showStatus(const events::Status &status)
{
    constexpr int Full = 100;
    m_position.milliseconds = status.position;
    m_folder.setStatus({status.position, std::clamp(status.bufferLevel, 0, Full), status.bufferStatus,
                        std::clamp(status.volume, 0, Full)});
}

void Context::showTrack(const events::Track &track)
{
    pps::Message known;
    if (track.track < 1 || track.track > MostTracks || !known.parse(track.metadata)) {
        return;
    }
    const auto number = static_cast<unsigned>(track.track);
    m_folder.setTrack(number, track.metadata);
    const Kind kind{.isFilm = known.number("md_video_width") > 0,
                    .isSeekable = known.text("md_title_seekable") == "true",
                    .duration = known.number("md_title_duration")};
    m_kinds[number] = kind;
    if (kind.isFilm && m_journal.hasVideo()) {
        m_engines.expectFilms();
    }
    // The report may have made the track one that can be parked; the rest begins anew.
    updateParking();
}

void Context::showQueue(const events::Queue &queue)
{
    m_total = static_cast<unsigned>(std::clamp<int64_t>(queue.total, 0, MostTracks));
    m_position.track = static_cast<unsigned>(std::clamp<int64_t>(queue.current, 1, MostTracks));
    m_folder.setQueue(m_position.track, m_total);
    std::erase_if(m_kinds, [this](const auto &entry) {
        return entry.first + Neighbourhood < m_position.track || entry.first > m_position.track + Neighbourhood;
    });
}

void Context::end(ErrorCode code, const std::optional<int64_t> &position)
{
    if (m_state != State::Playing) {
        return;
    }
    m_position.milliseconds = position.value_or(m_position.milliseconds);
    setState(State::Stopped, Folder::Ending{code, m_position});
}

void Context::engineDied()
{
    m_engine.reset();
    m_isOpen = false;
    ++m_deaths;
    if (m_input && !m_hasEnded) {
        m_resume = m_position;
        m_folder.setStatus({m_position.milliseconds});
        setState(State::Stopped, Folder::Ending{ErrorCode::Internal, m_position});
    }
    updateParking();
}

void Context::engineNeedsNetwork()
{
    if (m_opened) {
        m_isListFar = true;
        open(m_opening, std::exchange(m_opened, nullptr));
    }
}

} // namespace voro::renderer
