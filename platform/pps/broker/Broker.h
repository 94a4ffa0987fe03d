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

/** The identity of a client. */
struct Peer {
    /** The process, by the socket's credentials; the daemon's own for an adopted socket whose peer is not known. */
    pid_t process = 0;
    /** The socket, as Broker::adopt() named it, or 0. */
    uint64_t adopted = 0;
};

/**
 * Serves a control object inside the broker's process. It is called from Broker::process() and may call the broker
 * at any time.
 */
class Service {
public:
    virtual ~Service() = default;
    virtual void clientOpened(ClientId client, const Peer &peer) = 0;
    /** One message as the client wrote it, without an object line. */
    virtual void clientMessage(ClientId client, std::string_view text) = 0;
    /** Once for every client that opened, unless the object is no longer served. */
    virtual void clientClosed(ClientId client) = 0;
    /** The client has read everything that was sent: follows once on each Broker::notifyWhenRead(). */
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
    /** Drops every client without a packet, as if the process had died. */
    void leave();
    /** Called from process() when clientCount() changed. */
    void onClientCountChanged(std::function<void()> callback);

    /** The resources that processes use; services charge their work for a process to it. */
    Accounts &accounts();

    /** Calls a function from process() whenever the descriptor is readable, until unwatch(). */
    void watch(int descriptor, std::function<void()> callback);
    /** Call it before the descriptor is closed; the callback itself may do so. */
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
     * version `shownBy` know it already (0: nobody does). A longer text than MaximumKept is dropped.
     */
    void setWill(std::string_view folder, std::string_view text, uint64_t shownBy = 0,
                 pid_t payer = Accounts::Services);
    /** The version of the next publication. */
    uint64_t nextVersion() const;
    /**
     * Between the two a service publishes in the folder again what the will of an earlier broker said. A reader of
     * that will is not notified.
     */
    void beginReturn(std::string_view folder);
    void endReturn(std::string_view folder);

    /** Serves the control object at the path; false when it is served already. */
    bool serve(std::string_view path, Service *service);
    /** Ends that and notifies its clients. The service is not called any more. */
    void unserve(std::string_view path);
    /**
     * Sends a message to one client, as "@control" and the given lines. Ignored when the client is gone or opened for
     * writing only. False when the lines are longer than MaximumMessage: nothing is sent.
     */
    bool send(ClientId client, std::string_view lines);
    /** Sends a message to every client of the service object. */
    bool sendAll(std::string_view path, std::string_view lines);
    /** Sets messages, with an object line each, that this client reads when it loses this broker. */
    void setWill(ClientId client, std::string_view messages);
    /**
     * Sets the messages that the client sends first when it is back: with an object line each, or as its own code
     * makes requests of them. A longer text than MaximumKept is dropped.
     */
    void setReturn(ClientId client, std::string_view text);
    /** Whether the client has messages that it did not read yet. */
    bool isBehind(ClientId client) const;
    /** Calls clientHasRead() from process() as soon as the client is not behind. */
    void notifyWhenRead(ClientId client);
    /** Closes the client's object; clientClosed() follows from process(). */
    void disconnect(ClientId client);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace voro::pps
