#include "Connection.h"

#include "Runtime.h"

#include <poll.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>

namespace voro::pps {

namespace {

/**
 * Numbers this process's packets. The lock is held while a packet is sent, so that a packet with a higher number was
 * sent later; this is what lets the broker keep the order of a process over all its sockets.
 */
class Numbers {
public:
    static Numbers &instance()
    {
        // Never destroyed: objects may still be closed while the process ends.
        static Numbers &numbers = *new Numbers;
        return numbers;
    }

    template<typename Send>
    bool use(Request &request, Send send)
    {
        const std::lock_guard lock(m_mutex);
        if (m_owner != getpid()) {
            // The first packet, or a forked child's: it counts for itself.
            m_owner = getpid();
            m_next = 1;
            while (getrandom(&m_process, sizeof m_process, 0) != sizeof m_process) {
            }
        }
        request.process = m_process;
        request.number = m_next;
        const bool sent = send();
        m_next += sent;
        return sent;
    }

private:
    std::mutex m_mutex;
    pid_t m_owner = 0;
    uint64_t m_process = 0;
    uint64_t m_next = 1;
};

} // namespace

struct Connection::Packet {
    Reply header;
    std::string_view held;
    std::string_view body;
    // Not initialised: only what arrives is touched.
    char buffer[MaximumPacket];

    bool parse(size_t size)
    {
        if (size < sizeof header) {
            return false;
        }
        std::memcpy(&header, buffer, sizeof header);
        const std::string_view rest(buffer + sizeof header, size - sizeof header);
        const size_t heldSize = static_cast<size_t>(header.heldCount) * sizeof(Held);
        if (heldSize > rest.size()) {
            return false;
        }
        held = rest.substr(0, heldSize);
        body = rest.substr(heldSize);
        return true;
    }
};

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
    if (isOpen()) {
        return fail(EISCONN);
    }
    std::string folder;
    if (const int error = runtimeFolder(folder)) {
        return fail(error);
    }
    // A daemon that ends just now loses the handshake, and nothing else: try the next one.
    for (int attempt = 0; attempt < 5; ++attempt) {
        Fd socket = connectTo(folder);
        if (socket.isValid()) {
            if (handshake(std::move(socket), path, mode)) {
                return true;
            }
            if (m_error != EPIPE) {
                return false;
            }
        } else if (errno != ENOENT && errno != ECONNREFUSED) {
            return fail(errno);
        } else if (const int error = startDaemon(folder)) {
            return fail(error);
        }
    }
    return fail(ECONNREFUSED);
}

bool Connection::openOn(int socket, std::string_view path, unsigned mode)
{
    Fd owned(socket);
    return isOpen() ? fail(EISCONN) : handshake(std::move(owned), path, mode);
}

bool Connection::handshake(Fd socket, std::string_view path, unsigned mode)
{
    auto parsed = std::make_unique<ObjectPath>();
    if (!parsePath(path, *parsed) || !isOpenable(*parsed, mode)) {
        return fail(EINVAL);
    }
    m_socket = std::move(socket);
    m_mode = mode;
    m_path = std::move(parsed);
    m_seen = {};
    m_update.reset();
    m_isAtEnd = m_toldEnd = false;
    m_error = 0;
    Packet packet;
    // A broker that turns us away says why and closes, perhaps before it is asked.
    bool answered = send(Request::Open, path) || m_error == EPIPE;
    while (answered && !receive(packet)) {
        answered = !m_isAtEnd && waitForPacket();
    }
    if (!answered || packet.header.type != Reply::Opened || packet.header.error != 0) {
        m_socket.reset();
        return fail(!answered ? EPIPE : packet.header.type != Reply::Opened ? EPROTO : packet.header.error);
    }
    m_seen.position = packet.header.to;
    m_seen.more = packet.header.more;
    return true;
}

void Connection::close()
{
    if (isOpen()) {
        send(Request::Close, {});
        m_socket.reset();
        m_update.reset();
        m_seen = {};
    }
}

bool Connection::send(Request::Type type, std::string_view body)
{
    Request request{};
    request.type = type;
    request.mode = static_cast<uint8_t>(m_mode);
    request.version = WireVersion;
    request.seen = m_seen.position;
    iovec parts[] = {{&request, sizeof request}, {const_cast<char *>(body.data()), body.size()}};
    msghdr message{};
    message.msg_iov = parts;
    message.msg_iovlen = 2;
    return Numbers::instance().use(request, [&] {
        ssize_t sent;
        do {
            sent = sendmsg(fd(), &message, MSG_NOSIGNAL);
        } while (sent < 0 && errno == EINTR);
        return sent >= 0 || fail(errno == ECONNRESET ? EPIPE : errno);
    });
}

// Takes the next packet from the socket. False when there is none; at the end m_isAtEnd is set then.
bool Connection::receive(Packet &packet)
{
    ssize_t size;
    do {
        // The broker's side may have gone with packets of ours unread; that error hides the packets that it had sent.
        size = recv(fd(), packet.buffer, sizeof packet.buffer, MSG_DONTWAIT);
    } while (size < 0 && (errno == EINTR || errno == ECONNRESET));
    if (size < 0 && errno == EAGAIN) {
        return false;
    }
    m_isAtEnd = size <= 0 || !packet.parse(static_cast<size_t>(size));
    return !m_isAtEnd;
}

bool Connection::waitForPacket()
{
    pollfd entry{fd(), POLLIN, 0};
    int result;
    do {
        result = poll(&entry, 1, -1);
    } while (result < 0 && errno == EINTR);
    return result > 0;
}

// Takes all that the socket holds, so that m_update becomes what a read now returns. A change that continues from
// what was seen is that; whenever there is anything else, the broker is asked for the present.
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
        if (!send(Request::Pull, m_seen.held)) {
            m_isAtEnd = true;
            return;
        }
        do {
            while (!receive(packet)) {
                if (m_isAtEnd || !waitForPacket()) {
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
    if (m_path->isService()) {
        char byte;
        ssize_t size;
        do {
            size = recv(fd(), &byte, 1, MSG_DONTWAIT | MSG_PEEK);
        } while (size < 0 && (errno == EINTR || errno == ECONNRESET));
        m_isAtEnd = size == 0;
        return size >= 0;
    }
    fetch();
    return m_update || m_isAtEnd;
}

bool Connection::hasMore() const
{
    return m_update || (m_seen.more && !m_isAtEnd);
}

bool Connection::read(std::string &text, bool wait)
{
    text.clear();
    if (!isReader()) {
        return fail(EBADF);
    }
    for (;;) {
        if (m_path->isService() ? readMessage(text) : readUpdate(text)) {
            return true;
        }
        if (m_isAtEnd) {
            return readEnd(text);
        }
        if (!wait) {
            return true;
        }
        if (!waitForPacket()) {
            return fail(errno);
        }
    }
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
    m_seen = std::move(m_update->after);
    m_update.reset();
    return true;
}

bool Connection::readEnd(std::string &text)
{
    if (m_path->wait && m_path->isService() && !m_toldEnd) {
        // Ends a loop that reads until an answer comes.
        text = "@control\nerror::closed\n";
        m_toldEnd = true;
        return true;
    }
    m_socket.reset();
    return fail(EPIPE);
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
    if (!send(Request::Write, text)) {
        if (!(m_mode & Subscribe)) {
            // A reader learns it from a failing read, after what was sent before.
            m_socket.reset();
        }
        return false;
    }
    return true;
}

} // namespace voro::pps
