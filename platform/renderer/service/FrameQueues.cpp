#include "FrameQueues.h"

#include "SocketPair.h"

#include <QtCore/QTimer>

#include <pps/FdPassing.h>
#include <pps/Runtime.h>
#include <renderer/common/FrameQueue.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>

namespace voro::renderer {

namespace {

/** An item that has not sent the name of a queue after so many milliseconds is disconnected. */
constexpr int LongestSilence = 5'000;

/** The process at the other end; nothing when it is another user's. */
std::optional<pid_t> peerOf(int socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    const bool isOurUser =
        getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid() && peer.pid > 0;
    return isOurUser ? std::optional(peer.pid) : std::nullopt;
}

} // namespace

FrameQueues::~FrameQueues()
{
    if (m_listener.isValid()) {
        unlink(m_path.c_str());
    }
}

bool FrameQueues::listen(const std::string &folder)
{
    m_path = folder + '/' + std::string(FrameSocketName);
    m_listener = pps::listenAt(m_path);
    if (!m_listener.isValid()) {
        return false;
    }
    pps::refuseDescriptors(m_listener.get());
    m_pending = std::make_unique<QSocketNotifier>(m_listener.get(), QSocketNotifier::Read);
    QObject::connect(m_pending.get(), &QSocketNotifier::activated, [this] { accept(); });
    return true;
}

void FrameQueues::add(const std::string &name, const void *worker, Give give)
{
    m_producers.insert_or_assign(name, Producer{worker, std::move(give)});
    connectQueue(name);
}

void FrameQueues::remove(const std::string &name, const void *worker)
{
    const auto found = m_producers.find(name);
    if (found != m_producers.end() && found->second.worker == worker) {
        m_producers.erase(found);
    }
}

void FrameQueues::accept()
{
    pps::Fd socket;
    if (!m_acceptor.accept(m_listener.get(), socket) || !socket.isValid()) {
        return;
    }
    const auto process = peerOf(socket.get());
    auto charge = process ? m_accounts.take(*process, pps::Resource::Viewers) : pps::Accounts::Charge();
    if (!charge.isValid()) {
        return;
    }
    const int viewer = socket.get();
    auto ready = std::make_unique<QSocketNotifier>(viewer, QSocketNotifier::Read);
    QObject::connect(ready.get(), &QSocketNotifier::activated, [this, viewer] { read(viewer); });
    QTimer::singleShot(LongestSilence, ready.get(), [this, viewer, notifier = ready.get()] {
        // A closed one's notifier lives on for a moment, and its number may be another's by then.
        const auto found = m_viewers.find(viewer);
        if (found != m_viewers.end() && found->second.ready.get() == notifier && found->second.name.empty()) {
            close(viewer);
        }
    });
    m_viewers[viewer] = {std::move(charge), std::move(socket), std::move(ready), {}};
}

/** Its first packet is the name; a second one or the end of the connection ends it. */
void FrameQueues::read(int viewer)
{
    std::array<std::byte, MaximumQueueName + 1> packet;
    pps::Fd passed;
    const ssize_t size = pps::receivePacket(viewer, packet, passed);
    if (size < 0 && errno == EAGAIN) {
        return;
    }
    const std::string name(reinterpret_cast<const char *>(packet.data()),
                           static_cast<size_t>(std::max<ssize_t>(size, 0)));
    if (!isFrameQueue(name) || !m_viewers[viewer].name.empty()) {
        close(viewer);
        return;
    }
    // An item that connects again may be seen before the end of its old connection is.
    const auto former = std::find_if(m_viewers.begin(), m_viewers.end(),
                                     [&name](const auto &other) { return other.second.name == name; });
    if (former != m_viewers.end()) {
        close(former->first);
    }
    m_viewers[viewer].name = name;
    connectQueue(name);
}

void FrameQueues::close(int viewer)
{
    const auto found = m_viewers.find(viewer);
    found->second.ready->setEnabled(false);
    // A notifier must not be destroyed while it notifies.
    found->second.ready.release()->deleteLater();
    m_viewers.erase(found);
}

/** Gives the two ends away when both who want them are there. */
void FrameQueues::connectQueue(const std::string &name)
{
    const auto source = m_producers.find(name);
    const auto viewer =
        std::find_if(m_viewers.begin(), m_viewers.end(), [&](const auto &one) { return one.second.name == name; });
    if (source == m_producers.end() || viewer == m_viewers.end()) {
        return;
    }
    const auto [ours, theirs] = socketPair();
    constexpr std::byte Note{};
    if (ours.isValid() && pps::sendPacket(viewer->first, std::span(&Note, 1), ours.get())) {
        source->second.give(theirs.get());
    }
}

} // namespace voro::renderer
