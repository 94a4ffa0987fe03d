#pragma once

#include <cstdint>
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
    Connection() = default;
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /** Opens the object at the path (with options) at the runtime folder's broker, starting the daemon when needed. */
    bool open(std::string_view path, unsigned mode);
    /** Opens the object over a connected socket that the daemon made; takes the socket. */
    bool openOn(int socket, std::string_view path, unsigned mode);
    bool isOpen() const;
    void close();

    /** The socket, to wait for; -1 when closed. */
    int fd() const;
    /** Whether read() would return something, a failure included, without waiting. */
    bool isReadable();
    /** Whether a read is due that the socket does not show: the content at opening, or what did not fit into the last
        read. */
    bool hasMore() const;
    /** See PpsObject::read(). */
    bool read(std::string &text, bool wait);
    bool write(std::string_view text);

    int error() const;
};

} // namespace voro::pps
