#include "Commands.h"

#include "Confinement.h"
#include "NetworkRules.h"

#include <glib-unix.h>
#include <pps/FilePages.h>
#include <renderer/common/Window.h>
#include <renderer/worker/media/Files.h>
#include <renderer/worker/video/WindowSink.h>
#include <unistd.h>

#include <cstdlib>

namespace voro::renderer {

bool Commands::start()
{
    // The socket of a frame queue may arrive at any time, without a request.
    m_fileSource.reset(
        g_unix_fd_add(WorkerFilesSocket, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR), onFile, this));
    m_spareSource.reset(g_idle_add_full(G_PRIORITY_LOW, onSpare, this, nullptr));
    return m_link.open([this](const pps::Message &message) { handle(message); }, [this] { end(); });
}

/** Nobody needs this worker yet: it does ahead what the first medium would wait for. */
gboolean Commands::onSpare(gpointer self)
{
    auto *commands = static_cast<Commands *>(self);
    commands->m_spareSource.forget();
    commands->m_playback.connectSound();
    return G_SOURCE_REMOVE;
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
    constexpr unsigned LongestCompletion = 15;
    if (!m_recorder.isOpen()) {
        _exit(0);
    }
    // The disk may never answer, and then the main loop waits with it; this signal ends the process all the same.
    alarm(LongestCompletion);
    m_recorder.close([](const Result &) { _exit(0); });
}

/** Releases pages of libraries that only the beginning needed, when something has played on for a while. */
void Commands::armSettledTimer()
{
    constexpr guint Settled = 3'000;
    m_settledTimer.reset(m_player.isRunning() ? g_timeout_add(Settled, onSettled, this) : 0);
}

gboolean Commands::onSettled(gpointer self)
{
    static_cast<Commands *>(self)->m_settledTimer.forget();
    pps::releaseLibraryPages();
    return G_SOURCE_REMOVE;
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
    // Files for a request arrive before it.
    takeFiles();
    m_spareSource.reset();
    const int64_t id = message.number("id");
    const Answer reply = [this, id, command = message.text("msg")](const Result &result) {
        m_link.send(answer(command, id, result));
    };
    const auto request = parseRequest(message);
    if (!request) {
        reply({ErrorCode::Internal, "unknown request " + message.text("msg")});
    } else if (const auto *opening = std::get_if<requests::Open>(&*request)) {
        open(*opening, id, reply);
    } else if (std::holds_alternative<requests::Ping>(*request)) {
        ping(id);
    } else if (m_recorder.isOpen()) {
        record(*request, reply);
    } else {
        reply(play(*request));
        armSettledTimer();
    }
}

/** Reports that this worker lives, and how far it has got. */
void Commands::ping(int64_t id)
{
    std::string text = answer("ping", id, {});
    pps::appendNumber(text, PositionName, m_recorder.isOpen() ? m_recorder.position() : m_player.position());
    m_link.send(text);
}

void Commands::open(const requests::Open &request, int64_t id, const Answer &answer)
{
    m_player.close();
    if (request.isRecording()) {
        answer(m_recorder.open(request));
        return;
    }
    m_medium = request.medium;
    m_handed.expect(m_medium.isLocal() ? m_medium.path() : std::string(), id);
    if (const Result problem = apply(request.settings); !problem) {
        answer(problem);
        return;
    }
    m_player.setSpeed(request.speed);
    m_player.open(request, answer);
}

Result Commands::play(const Request &request)
{
    return std::visit(
        Overloaded{
            [this](const requests::Play &) { return m_player.play(); },
            [this](const SpeedChange &change) { return m_player.setSpeed(change.speed); },
            [this](const requests::Seek &seek) { return m_player.seek(seek.target.track, seek.target.milliseconds); },
            [this](const requests::Set &change) { return apply(change.settings); },
            [this](const requests::Stop &) {
                m_player.stop();
                m_handed.forget();
                return Result();
            },
            [this](const auto &) {
                m_player.close();
                m_handed.forget();
                return Result();
            },
        },
        request);
}

void Commands::record(const Request &request, const Answer &answer)
{
    std::visit(Overloaded{
                   [&](const requests::Play &) {
                       setOutliving(true);
                       m_recorder.start(std::move(m_file), answer);
                   },
                   [&](const requests::Stop &) { m_recorder.stop(answer); },
                   [&](const requests::Close &) {
                       m_recorder.close([answer](const Result &result) {
                           setOutliving(false);
                           answer(result);
                       });
                   },
                   [&](const SpeedChange &change) {
                       m_recorder.setPaused(change.speed.isPaused());
                       answer({});
                   },
                   [&](const requests::Set &change) {
                       m_recorder.apply(change.settings);
                       answer({});
                   },
                   [&](const auto &) {
                       answer({ErrorCode::UnsupportedOperation, "a recording cannot do that"});
                   },
               },
               request);
}

/** Has the player take over settings, when the windows that they name can be drawn into. */
Result Commands::apply(const Settings &settings)
{
    const auto &[display, authority] = settings.session;
    std::vector<std::string> urls{display.substr(0, display.find(':'))};
    for (const auto &[track, captions] : settings.captions) {
        urls.push_back(captions.medium.url());
    }
    NetworkRules::instance().setNamed(m_medium, urls);

    const bool hasOwnSink = std::getenv("VORO_VIDEO_SINK") != nullptr;
    const std::string video = settings.video.value_or("");
    const std::string subpicture = settings.subpicture.value_or("");
    const bool needsScreen = (windowNumber(video) && !hasOwnSink) || windowNumber(subpicture);
    if (needsScreen && !useDisplay(display, authority)) {
        return {ErrorCode::OutputUnavailable, "the X server " + display + " does not let the renderer draw"};
    }
    m_player.apply(settings, {.isAudible = settings.isAudible,
                              .role = settings.role,
                              .hasVideo = settings.video.has_value(),
                              .hasCaptions = settings.subpicture.has_value(),
                              .window = m_frames.window(video),
                              .captionWindow = m_frames.window(subpicture)});
    return {};
}

} // namespace voro::renderer
