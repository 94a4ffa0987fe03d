#include "Commands.h"

#include "Confinement.h"
#include "NetworkRules.h"

#include <glib-unix.h>
#include <renderer/common/Parameters.h>
#include <renderer/common/Protocol.h>
#include <renderer/common/TrackPosition.h>
#include <renderer/common/Window.h>
#include <renderer/worker/media/Files.h>
#include <renderer/worker/video/WindowSink.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace voro::renderer {

bool Commands::start()
{
    // An item of an application may come at any time.
    m_fileSource.reset(
        g_unix_fd_add(WorkerFilesSocket, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR), onFile, this));
    return m_link.open([this](const pps::Message &message) { handle(message); }, [this] { end(); });
}

gboolean Commands::onFile(gint, GIOCondition condition, gpointer self)
{
    auto *commands = static_cast<Commands *>(self);
    commands->takeFiles();
    if (condition & (G_IO_HUP | G_IO_ERR)) {
        commands->m_fileSource.forget();
        return G_SOURCE_REMOVE;
    }
    return G_SOURCE_CONTINUE;
}

/** Ends the worker with its daemon. Nothing but a recording has to be put in order. */
void Commands::end()
{
    static constexpr std::chrono::seconds LongestCompletion{15};
    if (!m_recorder.isOpen()) {
        _exit(0);
    }
    // The disk may never answer, and then the main loop waits with it.
    std::thread([] {
        std::this_thread::sleep_for(LongestCompletion);
        _exit(1);
    }).detach();
    m_recorder.close([](const Result &) { _exit(0); });
}

/** Takes what was handed over up to now. */
void Commands::takeFiles()
{
    while (auto passed = takeFile()) {
        if (passed->queue.empty()) {
            m_file = std::move(passed->file);
        } else {
            m_frames.connect(passed->queue, std::move(passed->file));
        }
    }
}

void Commands::handle(const pps::Message &message)
{
    const std::string command = message.text("msg");
    // What was handed over for a request came before it.
    takeFiles();
    if (command == "open") {
        open(message);
    } else if (command == "ping") {
        ping(message.number("id"));
    } else if (m_recorder.isOpen()) {
        record(command, message);
    } else {
        reply(command, message.number("id"), handleNow(command, message));
    }
}

/** Reports that this worker lives, and how far it has got. */
void Commands::ping(int64_t id)
{
    std::string text = answer("ping", id, {});
    pps::appendNumber(text, PositionName, m_recorder.isOpen() ? m_recorder.position() : m_player.position());
    m_link.send(text);
}

Result Commands::handleNow(const std::string &command, const pps::Message &message)
{
    if (command == "play") {
        return m_player.play();
    }
    if (command == "speed") {
        return m_player.setSpeed({static_cast<int>(message.number("speed"))});
    }
    if (command == "seek") {
        return m_player.seek(static_cast<unsigned>(message.number("track", 1)), message.number("position"));
    }
    if (command == "stop") {
        m_player.stop();
        m_handed.forget();
        return {};
    }
    if (command == "set") {
        nameHosts(message);
        if (const Result problem = findScreen(message); !problem) {
            return problem;
        }
        m_player.apply(read(message, m_player.settings()));
        return {};
    }
    if (command == "close") {
        m_player.close();
        m_handed.forget();
        return {};
    }
    return {ErrorCode::Internal, "unknown request " + command};
}

void Commands::open(const pps::Message &message)
{
    m_player.close();
    if (parseName<InputType>(message.text("type")) == InputType::Track) {
        openRecorder(message);
        return;
    }
    const int64_t id = message.number("id");
    m_medium = Medium(message.text("url"));
    m_handed.expect(m_medium.isLocal() ? m_medium.path() : std::string(), id);
    nameHosts(message);
    if (const Result problem = findScreen(message); !problem) {
        reply("open", id, problem);
        return;
    }
    m_player.apply(read(message, {}));
    m_player.open(m_medium, parseName<InputType>(message.text("type")) == InputType::Playlist,
                  static_cast<unsigned>(message.number("track", 1)), message.number("position"),
                  [this, id](const Result &result) { reply("open", id, result); });
}

void Commands::openRecorder(const pps::Message &message)
{
    reply("open", message.number("id"),
          m_recorder.open({.format = message.text("format"),
                           .channels = static_cast<int>(message.number("channels")),
                           .role = message.text("recording_role"),
                           .interval = static_cast<guint>(message.number("interval")),
                           .limit = static_cast<guint>(message.number("maxduration")),
                           .isPaused = message.number("speed") == 0}));
}

void Commands::record(const std::string &command, const pps::Message &message)
{
    const auto answer = [this, command, id = message.number("id")](const Result &result) {
        reply(command, id, result);
    };
    if (command == "play") {
        setOutliving(true);
        m_recorder.start(std::move(m_file), answer);
    } else if (command == "stop") {
        m_recorder.stop(answer);
    } else if (command == "close") {
        m_recorder.close([answer](const Result &result) {
            setOutliving(false);
            answer(result);
        });
    } else if (command == "speed") {
        m_recorder.setPaused(message.number("speed") == 0);
        answer({});
    } else if (command == "set") {
        m_recorder.setInterval(static_cast<guint>(message.number("interval")));
        m_recorder.setLimit(static_cast<guint>(message.number("maxduration")));
        answer({});
    } else {
        answer({ErrorCode::UnsupportedOperation, "a recording cannot do that"});
    }
}

/** Notes where the user's own URLs lead. */
void Commands::nameHosts(const pps::Message &message) const
{
    std::vector<std::string> others{message.text(DisplayName).substr(0, message.text(DisplayName).find(':'))};
    for (const auto &entry : message.entries()) {
        const auto parameters =
            entry.name.starts_with(TrackPrefix) ? Parameters::fromText(entry.value) : std::optional<Parameters>();
        if (parameters) {
            others.push_back(parameters->text("subpicture_url"));
        }
    }
    NetworkRules::instance().setNamed(m_medium, others);
}

/** Goes to the session in which a message wants windows to be drawn into. */
Result Commands::findScreen(const pps::Message &message)
{
    const bool hasOwnSink = std::getenv("VORO_VIDEO_SINK") != nullptr;
    const bool isNeeded =
        (windowNumber(message.text("video")) && !hasOwnSink) || windowNumber(message.text("subpicture"));
    return !isNeeded || useDisplay(message.text(DisplayName), message.text(AuthorityName))
               ? Result()
               : Result(ErrorCode::OutputUnavailable,
                        "the X server " + message.text(DisplayName) + " does not let the renderer draw");
}

/** What a message sets; what it leaves out stays as it is. */
Settings Commands::read(const pps::Message &message, Settings settings)
{
    settings.speed = {static_cast<int>(message.number("speed", settings.speed.thousandths))};
    settings.interval = static_cast<guint>(message.number("interval", settings.interval));
    settings.volume = message.number("volume", settings.volume);
    settings.preset = parseName<Preset>(message.text("eq_preset")).value_or(Preset::Off);
    settings.repeat = parseName<RepeatMode>(message.text("repeat")).value_or(RepeatMode::None);
    settings.pausesWithDevice = message.text("autopause") == "yes";
    settings.outputs = {.isAudible = message.text("audio") == "true",
                        .role = message.text("role"),
                        .hasVideo = message.has("video"),
                        .hasCaptions = message.has("subpicture"),
                        .window = m_frames.window(message.text("video")),
                        .captionWindow = m_frames.window(message.text("subpicture"))};
    settings.source = {static_cast<int>(message.number("video_src_x")), static_cast<int>(message.number("video_src_y")),
                       static_cast<int>(message.number("video_src_w")),
                       static_cast<int>(message.number("video_src_h"))};
    settings.captions.clear();
    for (const auto &entry : message.entries()) {
        if (!entry.name.starts_with(TrackPrefix)) {
            continue;
        }
        const auto track = parseNumber(entry.name.substr(TrackPrefix.size()), 1, MostTracks);
        const auto parameters = Parameters::fromText(entry.value);
        if (track && parameters) {
            settings.captions[static_cast<unsigned>(*track)] = {
                Medium(parameters->text("subpicture_url")), static_cast<int>(parameters->number("subpicture_index", 0)),
                parameters->text("subpicture_disable") != "1"};
        }
    }
    return settings;
}

void Commands::reply(const std::string &command, int64_t id, const Result &result)
{
    m_link.send(answer(command, id, result));
}

} // namespace voro::renderer
