#include "Worker.h"

#include "SocketPair.h"

#include <pps/FdPassing.h>
#include <pps/Log.h>
#include <renderer/common/FileRequest.h>
#include <renderer/common/Protocol.h>
#include <sys/socket.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace voro::renderer {

Worker::Kind Worker::usual()
{
    return {std::filesystem::read_symlink("/proc/self/exe").parent_path() / "voro-renderer", {}, true};
}

void Worker::setListener(EngineListener *listener)
{
    m_listener = listener;
    updateTimer();
}

void Worker::setOwner(pid_t owner, pps::Accounts::Charge charge)
{
    m_charge = std::move(charge);
    if (m_media) {
        m_media->setOwner(owner);
    }
}

/** Hands the worker the files that a request names. */
void Worker::handFiles(const Request &request, int64_t id)
{
    if (!m_media) {
        return;
    }
    if (const auto *open = std::get_if<requests::Open>(&request)) {
        m_media->open(*open, id);
    } else if (const auto *set = std::get_if<requests::Set>(&request)) {
        m_media->set(set->settings);
    }
}

Worker::Worker(pps::Broker &broker, const Limits &limits, Reach reach, std::function<void()> onDeath)
    : m_broker(broker),
      m_limits(limits),
      m_reach(reach),
      m_onDeath(std::move(onDeath)),
      m_usage(limits.usage)
{
    QObject::connect(&m_timer, &QTimer::timeout, [this] { check(); });
    m_silence.start();

    auto [ours, theirs] = socketPair();
    auto [files, theirFiles] = socketPair();
    auto [media, theirMedia] = socketPair();
    if (theirs.isValid() && theirFiles.isValid() && theirMedia.isValid()) {
        m_theirs = {std::move(theirs), std::move(theirFiles), std::move(theirMedia)};
        for (const pps::Fd *end : {&ours, &files, &media}) {
            pps::refuseDescriptors(end->get());
        }
        // Nothing is read there: descriptors queued in it would count against the user's limit of those in flight.
        shutdown(files.get(), SHUT_RD);
        // The worker waits for the answer to its opening.
        m_socket = m_broker.adopt(ours.release(), WorkerPath);
        m_files = std::move(files);
        m_media = std::make_unique<MediaFiles>(m_broker, std::move(media),
                                               m_reach.network ? nullptr : std::function<void()>([this] {
                                                   if (m_listener) {
                                                       m_listener->engineNeedsNetwork();
                                                   }
                                               }));
    }
}

void Worker::begin(std::unique_ptr<Process> process)
{
    m_process = std::move(process);
    if (m_process->isRunning()) {
        m_process->onEnd([this] {
            log::warn(log::Category::Worker, "a worker %s", m_process->ending().c_str());
            die();
        });
    } else {
        QTimer::singleShot(0, &m_timer, [this] { die(); });
    }
}

void Worker::connected(pps::ClientId client)
{
    m_client = client;
    m_usage.noteProgress();
    m_silence.restart();
    for (auto &[id, pending] : m_pending) {
        pending.age.restart();
    }
    for (const std::string &text : std::exchange(m_unsent, {})) {
        m_broker.send(m_client, text);
    }
}

void Worker::received(std::string_view text)
{
    m_silence.restart();
    pps::Message message;
    if (!message.parse(text)) {
        return;
    }
    if (message.has(PositionName)) {
        m_usage.notePosition(message.number(PositionName));
    }
    if (!message.has("res")) {
        if (!message.has(PositionName)) {
            m_usage.noteProgress();
        }
        if (const auto event = parseEvent(message, text); event && m_listener) {
            m_listener->engineEvent(*event);
        }
        return;
    }
    const auto found = m_pending.find(message.number("id"));
    if (found == m_pending.end()) {
        return;
    }
    const Engine::Answered done = std::move(found->second.done);
    m_pending.erase(found);
    m_usage.noteProgress();
    updateTimer();
    done(resultOf(message));
}

void Worker::closed()
{
    m_client = 0;
    die();
}

void Worker::detachListener()
{
    m_listener = nullptr;
    m_pending.clear();
    updateTimer();
}

void Worker::ask(const Request &request, Engine::Answered done)
{
    const int64_t id = ++m_lastId;
    const std::string text = toText(request, id);
    if (text.size() > pps::MaximumMessage) {
        done({ErrorCode::InvalidParameter, "the parameters are too many for a message"});
        return;
    }
    if (m_pending.empty()) {
        m_silence.restart();
    }
    const auto *open = std::get_if<requests::Open>(&request);
    if (open) {
        m_opening = id;
    }
    handFiles(request, id);
    m_pending[id] = {std::move(done), open && open->medium.isLocal() ? m_limits.localOpening : m_limits.request, {}};
    m_pending[id].age.start();
    updateTimer();
    send(text);
}

void Worker::send(const std::string &text)
{
    if (m_client == 0) {
        m_unsent.push_back(text);
    } else {
        m_broker.send(m_client, text);
    }
}

bool Worker::pass(int descriptor, std::string_view name)
{
    // No packet is empty: that would be the end.
    const std::string packet = std::string(name) + '\0';
    return pps::sendPacket(m_files.get(), std::as_bytes(std::span(packet)), descriptor);
}

void Worker::setWatched(bool isWatched)
{
    if (isWatched && !m_isWatched) {
        m_silence.restart();
    }
    m_isWatched = isWatched;
    updateTimer();
}

void Worker::updateTimer()
{
    const int interval = isExpected() ? m_limits.check : m_limits.restingCheck;
    if (!m_listener && !isExpected()) {
        m_timer.stop();
    } else if (!m_timer.isActive() || m_timer.interval() != interval) {
        m_timer.start(interval);
    }
}

bool Worker::isExcessive()
{
    const std::string excess = m_process && m_client != 0 ? m_usage.findExcess(m_process->id()) : std::string();
    if (!excess.empty()) {
        log::warn(log::Category::Worker, "a worker %s", excess.c_str());
    }
    return !excess.empty();
}

bool Worker::isOverdue() const
{
    return m_client != 0 && std::any_of(m_pending.begin(), m_pending.end(), [](const auto &entry) {
               return entry.second.age.hasExpired(entry.second.longest);
           });
}

void Worker::check()
{
    if (m_media) {
        m_media->releaseMemory();
    }
    if (isExcessive()) {
        m_hangs = true;
        die();
    } else if (!isExpected()) {
        return;
    } else if (isOverdue()) {
        log::warn(log::Category::Worker, "a worker did not answer a request in time");
        m_hangs = true;
        die();
    } else if (m_silence.hasExpired(m_client == 0 ? m_limits.start : m_limits.silence)) {
        log::warn(log::Category::Worker, "a worker has sent nothing for too long");
        m_hangs = true;
        die();
    } else if (m_client != 0 && m_silence.hasExpired(m_limits.check)) {
        // Its answer is a sign of life and nothing else; a report is one, too.
        m_broker.send(m_client, toText(requests::Ping{}, 0));
    }
}

void Worker::die()
{
    if (!std::exchange(m_isDead, true)) {
        m_timer.stop();
        m_onDeath();
    }
}

void Worker::reportDeath()
{
    EngineListener *listener = std::exchange(m_listener, nullptr);
    const auto pending = std::exchange(m_pending, {});
    if (listener) {
        listener->engineDied();
    }
    for (const auto &[id, request] : pending) {
        // A worker that hangs while it opens a medium waits for the medium's disk.
        if (m_hangs && id == m_opening) {
            request.done({ErrorCode::SourceUnavailable, "the medium does not answer"});
        } else {
            request.done({ErrorCode::Internal, m_hangs ? "the worker does not answer" : "the worker died"});
        }
    }
}

void Worker::leaveRunning()
{
    m_isDead = true;
    m_listener = nullptr;
    m_timer.stop();
    if (m_process) {
        m_process->detach();
    }
}

std::unique_ptr<Process> Worker::release()
{
    m_isDead = true;
    m_listener = nullptr;
    m_timer.stop();
    return std::move(m_process);
}

} // namespace voro::renderer
