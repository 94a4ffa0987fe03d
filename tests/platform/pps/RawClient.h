#pragma once

#include <poll.h>
#include <pps/Fd.h>
#include <pps/Wire.h>
#include <sys/socket.h>

#include <cstring>
#include <string>
#include <string_view>

namespace voro::pps {

/** The bytes of a request. */
inline std::string request(uint8_t type, std::string_view body, uint64_t process, uint64_t number, uint8_t mode = 3,
                           uint16_t version = WireVersion)
{
    Request header{};
    header.type = type;
    header.mode = mode;
    header.version = version;
    header.process = process;
    header.number = number;
    return std::string(reinterpret_cast<const char *>(&header), sizeof header).append(body);
}

/** A client that sends whatever bytes a test wants. */
class RawClient {
public:
    explicit RawClient(int socket) : m_socket(socket) {}

    bool send(std::string_view packet)
    {
        return ::send(m_socket.get(), packet.data(), packet.size(), MSG_NOSIGNAL) >= 0;
    }
    /** Waits for a packet of the broker and returns its type; 0 at the end. */
    int receive()
    {
        ssize_t size;
        do {
            size = recv(m_socket.get(), m_buffer, sizeof m_buffer, 0);
        } while (size < 0);
        return size == 0 ? 0 : m_buffer[0];
    }
    /** Waits until the broker has closed the socket. */
    void waitForEnd()
    {
        while (receive() > 0) {
        }
    }

private:
    Fd m_socket;
    char m_buffer[MaximumReply];
};

} // namespace voro::pps
