#pragma once

#include "Fd.h"
#include "Path.h"
#include "Wire.h"

#include <memory>
#include <string>
#include <string_view>

namespace voro::pps {

/**
 * One open PPS object without Qt: what PpsObject, the renderer's client functions and the workers are made of.
 *
 * Used by one thread at a time. A failed operation leaves an errno number in error().
 */
class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /** Opens the object at the path (with options) at the runtime folder's broker, starting the daemon when needed. */
    bool open(std::string_view path, unsigned mode);
    /** Opens the object over a connected socket that the daemon made; takes the socket. */
    bool openOn(int socket, std::string_view path, unsigned mode);
    bool isOpen() const { return m_socket.isValid(); }
    /** Whether it is open for reading. */
    bool isReader() const { return isOpen() && (m_mode & Subscribe) != 0; }
    void close();

    /** The socket, to wait for; -1 when closed. */
    int fd() const { return m_socket.get(); }
    /** Whether read() would return something, a failure included, without waiting. */
    bool isReadable();
    /** Whether a read is due that the socket does not show: the content at opening, or what did not fit into the last
        read. */
    bool hasMore() const;
    /** Whether the broker or the service went away, so that only what is here already can be read. */
    bool isAtEnd() const { return m_isAtEnd; }
    /**
     * Reads as PpsObject::read() does. False when nothing can be read: not open for reading, or the broker or the
     * service went away, which closes the connection.
     */
    bool read(std::string &text, bool wait);
    /** Writes one message. False, and nothing is sent: EINVAL for what is no PPS text of this object, EMSGSIZE above
        MaximumMessage, EBADF when not open for writing, EPIPE when the broker or the service went away. */
    bool write(std::string_view text);

    /** The last failure as an errno number; 0 when nothing failed. */
    int error() const { return m_error; }

private:
    struct Seen {
        Position position;
        std::string held;
        bool more = false;
    };
    struct Update {
        Seen after;
        std::string text;
    };
    struct Packet;

    bool fail(int error);
    bool handshake(Fd socket, std::string_view path, unsigned mode);
    bool send(Request::Type type, std::string_view body);
    bool receive(Packet &packet);
    bool waitForPacket();
    void fetch();
    void pull();
    bool readMessage(std::string &text);
    bool readUpdate(std::string &text);
    bool readEnd(std::string &text);

    Fd m_socket;
    int m_error = 0;
    unsigned m_mode = 0;
    bool m_isAtEnd = false;
    bool m_toldEnd = false;
    std::unique_ptr<const ObjectPath> m_path;
    Seen m_seen;
    std::unique_ptr<Update> m_update;
};

} // namespace voro::pps
