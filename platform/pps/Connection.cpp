#include "Connection.h"

#include "DaemonRecord.h"
#include "Packet.h"
#include "Runtime.h"
#include "Start.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <mutex>
#include <utility>

namespace voro::pps {

namespace {

using Clock = std::chrono::steady_clock;

/** The longest time from the end of the first of its sockets to the end of the last. */
constexpr int LongestDeath = 1'000;

/** The time left for waitForPacket(). */
int leftUntil(Clock::time_point deadline, int milliseconds)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return milliseconds < 0 ? -1 : static_cast<int>(std::max<std::chrono::milliseconds::rep>(left, 0));
}

/** Prints why this process does not reach the daemon, once for all objects. */
void complain(const std::string &problem)
{
    static std::mutex &mutex = *new std::mutex;
    static std::string &last = *new std::string;
    const std::lock_guard lock(mutex);
    if (std::exchange(last, problem) != problem) {
        std::fprintf(stderr, "voro: %s\n", problem.c_str());
    }
}

/**
 * Whether it is worth trying again after a daemon of another version has answered: an older one is asked to end, and
 * has gone when no player needed it.
 */
bool hasMadeRoom(const std::string &folder)
{
    const auto daemon = runningDaemon(folder);
    if (!daemon) {
        return true;
    }
    const bool isOlder = daemon->protocol < WireVersion;
    if (isOlder) {
        askToEnd(*daemon, Ending::WhenIdle);
    }
    if (isOlder && waitForEnd(*daemon, LongestDeath)) {
        return true;
    }
    complain("the daemon is version " + daemon->version + " and speaks protocol " + std::to_string(daemon->protocol)
             + ", this program speaks " + std::to_string(WireVersion) + "; "
             + (isOlder ? "it ends when no player needs it, or with voro doctor --restart"
                        : "start this program again to have its new version"));
    return false;
}

} // namespace

Connection::Connection() = default;

Connection::~Connection()
{
    close();
}

bool Connection::fail(int error)
{
    m_error = error;
    return false;
}

bool Connection::open(std::string_view path, unsigned mode)
{
    return isOpen() ? fail(EISCONN) : setPath(path, mode) && reach(true);
}

bool Connection::openOn(int socket, std::string_view path, unsigned mode)
{
    Fd owned(socket);
    m_endsWithDaemon = true;
    return isOpen() ? fail(EISCONN) : setPath(path, mode) && handshake(std::move(owned));
}

bool Connection::setPath(std::string_view path, unsigned mode)
{
    auto parsed = std::make_unique<ObjectPath>();
    if (!parsePath(path, *parsed) || !isOpenable(*parsed, mode)) {
        return fail(EINVAL);
    }
    m_name = path;
    m_path = std::move(parsed);
    m_mode = mode;
    m_return.clear();
    m_left.clear();
    m_knowsWill = m_isAtEnd = false;
    return true;
}

/** Opens the object at the runtime folder's broker. */
bool Connection::reach(bool mayStart)
{
    std::string folder;
    if (const int error = runtimeFolder(folder)) {
        complain(runtimeProblem(folder, error));
        return fail(error);
    }
    // A daemon that ends just now loses the handshake, and nothing else: try the next one.
    for (int attempt = 0; attempt < 5; ++attempt) {
        Fd socket = connectTo(folder);
        if (socket.isValid()) {
            if (handshake(std::move(socket))) {
                return true;
            }
            if (m_error != EPIPE && (m_error != EPROTO || !hasMadeRoom(folder))) {
                return false;
            }
        } else if (!mayStart || (errno != ENOENT && errno != ECONNREFUSED)) {
            return fail(errno);
        } else if (const int error = startDaemon(folder)) {
            return fail(error);
        }
    }
    return fail(m_error == EPROTO ? EPROTO : ECONNREFUSED);
}

bool Connection::handshake(Fd socket)
{
    Packet packet;
    // A broker that turns us away says why and closes, perhaps before it is asked.
    if (!send(socket.get(), Request::Open, m_name) && m_error != EPIPE) {
        return false;
    }
    Received received;
    while ((received = packet.receive(socket.get())) == Received::Nothing) {
        if (!waitForPacket(socket.get(), m_longestAnswer)) {
            return fail(errno);
        }
    }
    if (received == Received::End) {
        return fail(EPIPE);
    }
    if (packet.header.type != Reply::Opened || packet.header.error != 0) {
        return fail(packet.header.type == Reply::Opened ? packet.header.error : EPROTO);
    }
    brokerReached(packet.header.from);
    if (m_isAtEnd && packet.header.from == m_broker) {
        // The same broker still runs: our socket was too full for its last packet.
        m_lostDaemon = false;
        return fail(ECONNABORTED);
    }
    m_socket = std::move(socket);
    ++m_socketNumber;
    m_update.reset();
    m_isAtEnd = m_lostDaemon = m_wasClosed = m_announcedEnd = false;
    m_error = 0;
    m_broker = packet.header.from;
    m_seen = {packet.header.to, {}, packet.header.more != 0};
    m_will.clear();
    keep(packet);
    return true;
}

void Connection::close()
{
    if (isOpen()) {
        send(fd(), Request::Close, {});
        m_socket.reset();
        m_update.reset();
        m_folderWill.reset();
        m_seen = {};
    }
}

bool Connection::send(int socket, Request::Type type, std::string_view body)
{
    Request request{};
    request.type = type;
    request.mode = static_cast<uint8_t>(m_mode);
    request.version = WireVersion;
    request.knowsWill = m_knowsWill;
    request.seen = m_seen.position;
    const int error = sendRequest(socket, request, body);
    return error == 0 || fail(error);
}

// Takes the next packet that has something to say. False when there is none; at the end m_isAtEnd is set then.
bool Connection::receive(Packet &packet)
{
    while (!m_isAtEnd) {
        switch (packet.receive(fd())) {
        case Received::Nothing:
            return false;
        case Received::End:
            noticeEnd();
            return false;
        case Received::Packet:
            keep(packet);
            if (packet.header.type == Reply::Closed) {
                m_wasClosed = true;
                noticeEnd();
            } else if (packet.header.type != Reply::Keep) {
                return true;
            }
        }
    }
    return false;
}

void Connection::keep(const Packet &packet)
{
    if (packet.header.kept & Reply::FolderWill) {
        m_folderWill = keepWill(m_path->folder, {std::string(packet.will), packet.header.shownBy}, m_broker);
    }
    if (packet.header.kept & Reply::ClientWill) {
        m_will = packet.will;
    }
    if (packet.header.kept & Reply::Return) {
        m_return = packet.back;
    }
}

// An end without Reply::Closed is the loss of the daemon. Its will is read next, unless the reader has seen the same.
void Connection::noticeEnd()
{
    m_isAtEnd = true;
    m_lostDaemon = !m_wasClosed;
    if (m_lostDaemon) {
        brokerLost(m_broker);
    }
    if (!m_lostDaemon || !(m_mode & Subscribe)) {
        return;
    }
    if (m_path->isService()) {
        m_left += std::exchange(m_will, {});
    } else if (const FolderWill will = findWill(m_path->folder, m_broker); will.isDropped) {
        m_knowsWill = false;
    } else if (!will.text.empty()) {
        m_knowsWill = true;
        const uint64_t seen = m_update ? m_update->after.position.base : m_seen.position.base;
        if (will.shownBy == 0 || seen < will.shownBy) {
            m_left = partOf(will.text, *m_path);
        }
    }
}

bool Connection::staysOpen(bool wait) const
{
    if (!m_lostDaemon || m_endsWithDaemon || m_path->server) {
        return false;
    }
    // A client that waits for an answer waits for one to a message that reached the daemon.
    return !m_path->isService() || m_mode == Publish || (!wait && hasReturn());
}

// Moves the socket's packets to m_left or m_update.
void Connection::drain()
{
    if (!m_path->isService()) {
        fetch();
        return;
    }
    Packet packet;
    std::string messages;
    while (receive(packet)) {
        messages += packet.body;
    }
    m_left.insert(0, messages);
}

// A dying process closes one socket after the other: a message to one of the last is lost, although another object has
// noticed the end already.
void Connection::awaitEnd()
{
    const auto deadline = Clock::now() + std::chrono::milliseconds(LongestDeath);
    do {
        drain();
    } while (!m_isAtEnd && waitForPacket(fd(), leftUntil(deadline, LongestDeath)));
}

bool Connection::comeBack(bool mayStart)
{
    drain();
    if (!m_lostDaemon || m_endsWithDaemon || !reach(mayStart)) {
        return false;
    }
    for (std::string_view rest = m_return; !rest.empty();) {
        send(fd(), Request::Write, takeText(rest));
    }
    return true;
}

// Takes all that the socket holds and sets m_update to the result of a read now. That is a change that continues from
// the position seen; for anything else the broker is asked for the present.
void Connection::fetch()
{
    bool isBehind = !m_update && m_seen.more;
    Packet packet;
    while (receive(packet)) {
        if (packet.header.type == Reply::Change && !isBehind && !m_update
            && packet.header.from == m_seen.position.base) {
            m_update = std::make_unique<Update>(Update{
                {packet.header.to, std::string(packet.held), packet.header.more != 0}, std::string(packet.body)});
        } else if (packet.header.type == Reply::Change || packet.header.type == Reply::Mark) {
            isBehind = true;
        }
    }
    if (isBehind && !m_isAtEnd) {
        pull();
    }
}

void Connection::pull()
{
    m_update.reset();
    Packet packet;
    do {
        if (!send(fd(), Request::Pull, m_seen.held)) {
            // Takes the broker's last packets and the end.
            while (receive(packet)) {
            }
            return;
        }
        do {
            while (!receive(packet)) {
                if (m_isAtEnd || !waitForPacket(fd(), m_longestAnswer)) {
                    return;
                }
            }
        } while (packet.header.type != Reply::Answer);
        Seen after{packet.header.to, std::string(packet.held), packet.header.more != 0};
        if (!packet.body.empty()) {
            m_update = std::make_unique<Update>(Update{std::move(after), std::string(packet.body)});
        } else {
            m_seen = std::move(after);
        }
    } while (!m_update && m_seen.more);
}

bool Connection::isReadable()
{
    if (!isReader()) {
        return false;
    }
    if (!m_path->isService()) {
        fetch();
        return m_update || !m_left.empty() || (m_isAtEnd && !isLost());
    }
    uint8_t type = 0;
    while (!m_isAtEnd) {
        ssize_t size;
        do {
            size = recv(fd(), &type, 1, MSG_DONTWAIT | MSG_PEEK);
        } while (size < 0 && (errno == EINTR || errno == ECONNRESET));
        if (size < 0) {
            return !m_left.empty();
        }
        if (size > 0 && type != Reply::Keep && type != Reply::Closed) {
            return true;
        }
        // Only things to keep, or the end.
        Packet packet;
        if (receive(packet)) {
            m_left += packet.body;
        }
    }
    return !m_left.empty() || !isLost();
}

bool Connection::hasMore() const
{
    return m_update || !m_left.empty() || (m_seen.more && !m_isAtEnd);
}

bool Connection::readWithin(std::string &text, int milliseconds)
{
    text.clear();
    if (!isReader()) {
        return fail(EBADF);
    }
    const bool wait = milliseconds != 0;
    const auto deadline = Clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;) {
        if (readLeft(text) || (m_path->isService() ? readMessage(text) : readUpdate(text)) || readLeft(text)) {
            return true;
        }
        if (m_isAtEnd) {
            if (!staysOpen(wait)) {
                return readEnd(text);
            }
            if (!comeBack(wait)) {
                return wait ? readEnd(text) : true;
            }
        } else if (!wait) {
            return true;
        } else if (const int left = leftUntil(deadline, milliseconds); !waitForPacket(fd(), left)) {
            return fail(errno);
        }
    }
}

/** Reads the rest of a daemon that went; a plain object's last change comes first. */
bool Connection::readLeft(std::string &text)
{
    if (m_left.empty() || m_update) {
        return false;
    }
    if (!m_path->isService()) {
        text = std::exchange(m_left, {});
        return true;
    }
    std::string_view rest = m_left;
    text = takeText(rest);
    m_left.erase(0, text.size());
    return true;
}

bool Connection::readMessage(std::string &text)
{
    Packet packet;
    if (!receive(packet)) {
        return false;
    }
    text = packet.body;
    return true;
}

bool Connection::readUpdate(std::string &text)
{
    fetch();
    if (!m_update) {
        return false;
    }
    text = std::move(m_update->text);
    m_knowsWill = m_knowsWill && m_isAtEnd;
    m_seen = std::move(m_update->after);
    m_update.reset();
    return true;
}

bool Connection::readEnd(std::string &text)
{
    if (m_path->wait && m_path->isService() && !m_announcedEnd) {
        // Ends a loop that reads until an answer comes.
        text = "@control\nerror::closed\n";
        m_announcedEnd = true;
        return true;
    }
    m_socket.reset();
    return fail(m_lostDaemon ? ECONNRESET : EPIPE);
}

bool Connection::write(std::string_view text)
{
    if (!isOpen() || !(m_mode & Publish)) {
        return fail(EBADF);
    }
    if (text.size() > MaximumMessage) {
        return fail(EMSGSIZE);
    }
    if (!isWritable(*m_path, text)) {
        return fail(EINVAL);
    }
    if (!m_isAtEnd && isBrokerLost(m_broker)) {
        awaitEnd();
    }
    if (!m_isAtEnd && send(fd(), Request::Write, text)) {
        return true;
    }
    if (!m_isAtEnd && m_error != EPIPE) {
        return false;
    }
    if (comeBack(true)) {
        return send(fd(), Request::Write, text);
    }
    if (m_mode == Publish && !isLost()) {
        // A reader learns it from a failing read, after what was sent before.
        m_socket.reset();
    }
    return fail(m_lostDaemon ? ECONNRESET : EPIPE);
}

} // namespace voro::pps
