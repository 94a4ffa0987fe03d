#include "Client.h"

#include "Hub.h"

#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace voro::pps {

Client::Received Client::receive(ClientPacket &received, char *buffer)
{
    ssize_t size;
    do {
        // A client that died with unread packets shows as ECONNRESET in front of what it had written.
        size = recv(fd(), buffer, MaximumRequest, MSG_DONTWAIT | MSG_TRUNC);
    } while (size < 0 && (errno == EINTR || errno == ECONNRESET));
    if (size < 0) {
        return errno == EAGAIN ? Received::Nothing : Received::End;
    }
    if (size == 0) {
        return Received::End;
    }
    const size_t length = static_cast<size_t>(size);
    const size_t headerLength = std::min(length, sizeof received.header);
    received.header = {};
    std::memcpy(&received.header, buffer, headerLength);
    received.body = {buffer + headerLength, std::min(length, MaximumRequest) - headerLength};
    // The first packet of another version may be of any size: it is answered.
    const bool isOther =
        length >= CommonHeader && received.header.type == Request::Open && received.header.version != WireVersion;
    const bool isGood = length >= sizeof received.header && length <= MaximumRequest;
    if (isOther) {
        received.header.process = received.header.number = 0;
    }
    return isGood || isOther ? Received::Packet : Received::Garbage;
}

void Client::send(Reply header, std::string_view held, std::string_view body)
{
    if (m_isPeerGone || m_saidClosed) {
        return;
    }
    const std::string whole = makePacket(header, held, body);
    if (m_queue.empty() && trySend(whole)) {
        return;
    }
    if (!m_isPeerGone) {
        m_queuedSize += whole.size();
        m_queue.push_back(std::move(whole));
    }
}

void Client::sayClosed()
{
    Reply header{};
    header.type = Reply::Closed;
    send(header, {}, {});
    m_saidClosed = true;
}

void Client::leave()
{
    shutdown(fd(), SHUT_RDWR);
    m_saidClosed = true;
}

const Kept &Client::folderWill() const
{
    static const Kept none;
    if (endpoint) {
        return endpoint->will;
    }
    return subscriber.folder ? subscriber.folder->will : none;
}

/** A packet with what the client has yet to be given to keep. */
std::string Client::makePacket(Reply &header, std::string_view held, std::string_view body)
{
    std::string_view willText;
    std::string_view backText;
    const auto take = [&header](Reply::Kept kind, const Kept &wanted, Kept &given, std::string_view &text) {
        if (wanted != given) {
            given = wanted;
            header.kept |= kind;
            text = wanted ? std::string_view(wanted->text) : std::string_view();
            header.shownBy = wanted ? wanted->shownBy : 0;
        }
    };
    if (reads()) {
        if (endpoint && !endpoint->will) {
            take(Reply::ClientWill, will, m_will, willText);
        } else {
            take(Reply::FolderWill, folderWill(), m_folderWill, willText);
        }
        take(Reply::Return, back, m_back, backText);
    }
    header.willSize = static_cast<uint32_t>(willText.size());
    header.returnSize = static_cast<uint32_t>(backText.size());
    std::string whole;
    whole.reserve(sizeof header + held.size() + body.size() + willText.size() + backText.size());
    whole.append(reinterpret_cast<const char *>(&header), sizeof header);
    whole.append(held).append(body).append(willText).append(backText);
    return whole;
}

void Client::flush()
{
    while (!m_queue.empty() && trySend(m_queue.front())) {
        m_queuedSize -= m_queue.front().size();
        m_queue.pop_front();
    }
}

size_t Client::cost() const
{
    constexpr size_t ClientCost = 2048;
    constexpr size_t PacketCost = 64;
    return ClientCost + m_queuedSize + m_queue.size() * PacketCost;
}

bool Client::hasReadAll() const
{
    // The kernel still counts 1 while it wakes us for the last packet.
    int unread = 0;
    return m_queue.empty() && ioctl(fd(), SIOCOUTQ, &unread) == 0 && unread <= 1;
}

bool Client::trySend(std::string_view whole)
{
    ssize_t sent;
    do {
        sent = ::send(fd(), whole.data(), whole.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    if (sent < 0 && errno != EAGAIN && errno != ENOBUFS) {
        // Its end is seen, in the right order, by reading.
        m_isPeerGone = true;
        m_queue.clear();
        m_queuedSize = 0;
    }
    return sent >= 0;
}

} // namespace voro::pps
