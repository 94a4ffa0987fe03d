#pragma once

#include "Fd.h"
#include "Loss.h"
#include "Path.h"
#include "Wire.h"

#include <memory>
#include <string>
#include <string_view>

namespace voro::pps {

struct Packet;

/**
 * One open PPS object without Qt: what PpsObject, the renderer's client functions and the workers are made of.
 *
 * When the daemon goes, what it had sent is read first and then its will. A subscription of a plain object, a client
 * of a service object with a return, and an object opened for writing only stay open then: they are lost until
 * comeBack() succeeds, which read() and write() try as well. All others are at their end.
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
    /** Opens the object over a connected socket that the daemon made; takes the socket. It never comes back. */
    bool openOn(int socket, std::string_view path, unsigned mode);
    /** The object ends with its daemon; the owner brings it back by other means. */
    void endWithDaemon() { m_endsWithDaemon = true; }
    /** Changes how long the broker may take for an answer; the default is a minute. */
    void setLongestAnswer(int milliseconds) { m_longestAnswer = milliseconds; }
    bool isOpen() const { return m_socket.isValid(); }
    /** Whether it is open for reading. */
    bool isReader() const { return isOpen() && (m_mode & Subscribe) != 0; }
    void close();

    /** The socket, to wait for; -1 when closed. */
    int fd() const { return m_socket.get(); }
    /** Counts the sockets that it had. */
    unsigned socketNumber() const { return m_socketNumber; }
    /** Whether read() would return something, a failure included, without waiting. */
    bool isReadable();
    /**
     * Whether a read is due that the socket does not show: the content at opening, what did not fit into the last
     * read, or what is left of a daemon that went.
     */
    bool hasMore() const;
    /** Whether nothing more comes over the socket, so that only what is here already can be read. */
    bool isAtEnd() const { return m_isAtEnd; }
    /** Whether the daemon went, and the object stays open. */
    bool isLost() const { return m_isAtEnd && staysOpen(false); }
    /** Whether the object is to come back by itself, without a command. */
    bool hasReturn() const { return !m_return.empty(); }
    /** Opens a lost object anew, and starts the daemon for it if that is wanted. */
    bool comeBack(bool mayStart);
    /**
     * Reads as PpsObject::read() does. False when nothing can be read: not open for reading, or the broker or the
     * service went away, which closes the connection.
     */
    bool read(std::string &text, bool wait) { return readWithin(text, wait ? -1 : 0); }
    /** The same, and waits so many milliseconds at most (-1: without a limit); ETIMEDOUT then. */
    bool readWithin(std::string &text, int milliseconds);
    /**
     * Writes one message. False, and nothing is sent: EINVAL for what is no PPS text of this object, EMSGSIZE above
     * MaximumMessage, EBADF when not open for writing, EPIPE when the service went away, ECONNRESET when the daemon
     * did.
     */
    bool write(std::string_view text);

    /** The first messages that the daemon expects when the object is brought back. */
    const std::string &returnText() const { return m_return; }
    /** The will that the daemon left for the object's folder. */
    std::string folderWill() const { return findWill(m_path->folder, m_broker).text; }
    /**
     * Drops it, for the service that brings the folder back: a reader that did not read it by then reads the present.
     */
    void dropFolderWill() const { dropWill(m_path->folder, m_broker); }

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

    bool fail(int error);
    bool setPath(std::string_view path, unsigned mode);
    bool reach(bool mayStart);
    bool handshake(Fd socket);
    bool send(int socket, Request::Type type, std::string_view body);
    bool receive(Packet &packet);
    void keep(const Packet &packet);
    void fetch();
    void pull();
    bool readMessage(std::string &text);
    bool readUpdate(std::string &text);
    bool readLeft(std::string &text);
    bool readEnd(std::string &text);
    void noticeEnd();
    void drain();
    void awaitEnd();
    bool staysOpen(bool wait) const;

    Fd m_socket;
    unsigned m_socketNumber = 0;
    int m_error = 0;
    unsigned m_mode = 0;
    int m_longestAnswer = 60'000;
    bool m_endsWithDaemon = false;
    bool m_isAtEnd = false;
    /** At the end: the daemon went without saying so. */
    bool m_lostDaemon = false;
    bool m_wasClosed = false;
    bool m_announcedEnd = false;
    /** The path as it was given, and parsed. */
    std::string m_name;
    std::unique_ptr<const ObjectPath> m_path;
    Seen m_seen;
    std::unique_ptr<Update> m_update;

    /** The broker's own number. */
    uint64_t m_broker = 0;
    std::shared_ptr<KeptWill> m_folderWill;
    std::string m_will;
    std::string m_return;
    /** Text of a lost daemon that is still to be read. */
    std::string m_left;
    /** The reader of a plain object has read its folder's will, and nothing since. */
    bool m_knowsWill = false;
};

} // namespace voro::pps
