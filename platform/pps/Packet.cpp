#include "Packet.h"

#include <poll.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
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
    void use(Request &request, Send send)
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
        m_next += send();
    }

private:
    std::mutex m_mutex;
    pid_t m_owner = 0;
    uint64_t m_process = 0;
    uint64_t m_next = 1;
};

} // namespace

bool Packet::parse(size_t size)
{
    header = {};
    std::memcpy(&header, buffer, std::min(size, sizeof header));
    if (size < sizeof header) {
        // All versions have this part in common.
        return size >= CommonHeader && header.type == Reply::Opened && header.error != 0;
    }
    std::string_view rest(buffer + sizeof header, size - sizeof header);
    const size_t heldSize = header.heldCount * sizeof(Held);
    if (heldSize > rest.size() || header.willSize > rest.size() - heldSize
        || header.returnSize > rest.size() - heldSize - header.willSize) {
        return false;
    }
    held = rest.substr(0, heldSize);
    back = rest.substr(rest.size() - header.returnSize);
    will = rest.substr(rest.size() - header.returnSize - header.willSize, header.willSize);
    body = rest.substr(heldSize, rest.size() - heldSize - header.willSize - header.returnSize);
    return true;
}

Received Packet::receive(int socket)
{
    ssize_t size;
    do {
        // The broker's side may have gone with packets of ours unread; that error hides the packets that it had
        // sent.
        size = recv(socket, buffer, sizeof buffer, MSG_DONTWAIT);
    } while (size < 0 && (errno == EINTR || errno == ECONNRESET));
    if (size < 0 && errno == EAGAIN) {
        return Received::Nothing;
    }
    return size > 0 && parse(static_cast<size_t>(size)) ? Received::Packet : Received::End;
}

bool waitForPacket(int socket, int milliseconds)
{
    pollfd entry{socket, POLLIN, 0};
    int result;
    do {
        result = poll(&entry, 1, milliseconds);
    } while (result < 0 && errno == EINTR);
    if (result == 0) {
        errno = ETIMEDOUT;
    }
    return result > 0;
}

int sendRequest(int socket, Request &request, std::string_view body)
{
    iovec parts[] = {{&request, sizeof request}, {const_cast<char *>(body.data()), body.size()}};
    msghdr message{};
    message.msg_iov = parts;
    message.msg_iovlen = 2;
    int error = 0;
    Numbers::instance().use(request, [&] {
        ssize_t sent;
        do {
            sent = sendmsg(socket, &message, MSG_NOSIGNAL);
        } while (sent < 0 && errno == EINTR);
        if (sent < 0) {
            error = errno == ECONNRESET ? EPIPE : errno;
        }
        return sent >= 0;
    });
    return error;
}

} // namespace voro::pps
