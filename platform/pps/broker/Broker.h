#pragma once

#include "Accounts.h"

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace voro::pps {

/** A client of a service object, as its service names it: the ID of "@control.ID". Never used twice. */
using ClientId = uint64_t;

/** Who a client is. */
struct Peer {
    /** The process, by the socket's credentials; the daemon's own for an adopted socket whose peer is not known. */
    pid_t process = 0;
    /** The socket, as Broker::adopt() named it, or 0. */
    uint64_t adopted = 0;
};

/**
 * What serves a control object inside the broker's process. It is called from Broker::process() and may call the
 * broker back at any time.
 */
class Service {
public:
    virtual ~Service() = default;
    virtual void clientOpened(ClientId client, const Peer &peer) = 0;
    /** One message as the client wrote it, without an object line. */
    virtual void clientMessage(ClientId client, std::string_view text) = 0;
    /** Once for every client that opened, unless the object is no longer served. */
    virtual void clientClosed(ClientId client) = 0;
    /** The client has read everything that was sent: follows once on each Broker::tellWhenRead(). */
    virtual void clientHasRead(ClientId) {}
};

/**
 * Holds every PPS object and passes messages between processes. It runs in the caller's event loop: when fd() is
 * readable, process() does everything there is to do without blocking.
 *
 * Nothing that a client sends can stop it: a client that breaks the rules loses its socket, and only that.
 */
class Broker {
public:
    Broker();
    ~Broker();
    Broker(const Broker &) = delete;
    Broker &operator=(const Broker &) = delete;

    /** Takes a listening SOCK_SEQPACKET socket whose clients are served from now on. */
    void listen(int socket);
    /**
     * Takes a connected socket (a worker's); the result names it in Peer::adopted. With a path its client can open
     * that object and no other.
     */
    uint64_t adopt(int socket, std::string_view onlyPath = {});
    /**
     * Keeps a folder and all below it to this process: clients can read there and talk to its service objects, but
     * neither serve nor publish any.
     */
    void reserve(std::string_view folder);

    /** Readable when process() has work. */
    int fd() const;
    void process();

    /** How many sockets of clients are open, adopted ones not counted. */
    size_t clientCount() const;
    /** Leaves every client without a word, as if the process had died. */
    void leave();
    /** Called from process() when clientCount() changed. */
    void onClientCountChanged(std::function<void()> callback);

    /** Who uses how much; services charge to it what they do for a process. */
    Accounts &accounts();

    /** Has a function called from process() whenever the descriptor is readable, until unwatch(). */
    void watch(int descriptor, std::function<void()> callback);
    /** To be called before the descriptor is closed; the callback itself may do so. */
    void unwatch(int descriptor);

    // For services in this process. Everything takes effect at once and in the order of the calls.

    enum class Fence {
        None,
        /** Readers that did not see this content yet read it before any newer one of this object. */
        Hold,
    };
    /**
     * Publishes text on a plain object; a first line "*@name" replaces it whole, "-@name" deletes it. False when the
     * text is bad, the object would grow beyond MaximumMessage, or the process that it is charged to cannot have so
     * much: nothing has changed then.
     */
    bool publish(std::string_view path, std::string_view text, Fence fence = Fence::None,
                 pid_t payer = Accounts::Services);
    /** Deletes the object at the path and every object in the folder of that name. */
    void remove(std::string_view path);
    /** The whole object as a reader would get it, empty when there is none. */
    std::string content(std::string_view path) const;
    /**
     * Leaves a will: text of objects of the folder, which their readers read when they lose this broker. It goes to
     * everybody who has something open in the folder, with what is sent to them next. Readers who have seen the
     * version `shownBy` know it already (0: nobody does). One that is longer than MaximumKept is none.
     */
    void setWill(std::string_view folder, std::string_view text, uint64_t shownBy = 0,
                 pid_t payer = Accounts::Services);
    /** The version of what is published next. */
    uint64_t nextVersion() const;
    /**
     * From the one to the other a service publishes again in the folder what the will of an earlier broker said. Who
     * has read that one is not told.
     */
    void beginReturn(std::string_view folder);
    void endReturn(std::string_view folder);

    /** Serves the control object at the path; false when somebody serves it already. */
    bool serve(std::string_view path, Service *service);
    /** Ends that; its clients are told. The service is not called any more. */
    void unserve(std::string_view path);
    /**
     * Sends a message to one client, as "@control" and the given lines. Ignored when the client is gone or opened for
     * writing only. False when the lines are longer than MaximumMessage: nothing is sent.
     */
    bool send(ClientId client, std::string_view lines);
    /** Sends a message to every client of the service object. */
    bool sendAll(std::string_view path, std::string_view lines);
    /** Leaves messages, with an object line each, that this client reads when it loses this broker. */
    void setWill(ClientId client, std::string_view messages);
    /**
     * Gives the client what it sends first when it is back: messages with an object line each, or what its own code
     * makes a request of. One that is longer than MaximumKept is none.
     */
    void setReturn(ClientId client, std::string_view text);
    /** Whether the client has messages that it did not read yet. */
    bool isBehind(ClientId client) const;
    /** Has clientHasRead() called from process() as soon as the client is not behind. */
    void tellWhenRead(ClientId client);
    /** Closes the client's object; clientClosed() follows from process(). */
    void disconnect(ClientId client);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace voro::pps
