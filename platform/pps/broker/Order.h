#pragma once

#include "Client.h"

#include <deque>
#include <unordered_map>
#include <vector>

namespace voro::pps {

/**
 * Hands on the packets of each process in the order in which the process sent them, on whichever of its sockets.
 *
 * A process numbers its packets and sends them in that order. So when a packet arrives whose number is not the next
 * one, the packets in between are already in the kernel's buffers of the other sockets: every socket is read one packet
 * ahead until the missing one appears. A number that does not appear was lost with its socket.
 *
 * A process that never stops sending could keep this up for ever, so only so many packets are handled at once.
 */
class Order {
public:
    class Handler {
    public:
        virtual ~Handler() = default;
        /** Adds the clients that have connected by now, as many as may be added at once. */
        virtual void acceptPending() = 0;
        virtual void handlePacket(Client &client, const ClientPacket &packet) = 0;
        /** The client's socket was closed at the other end, and everything its process had sent was handled. */
        virtual void handleEnd(Client &client) = 0;
        virtual void handleGarbage(Client &client) = 0;
    };

    explicit Order(Handler &handler) : m_handler(handler) {}

    void add(Client &client) { m_fresh.push_back(&client); }
    void remove(Client &client);
    /** Handles what arrived on the client's socket, which stays readable while something is left. */
    void readable(Client &client);
    /** Handles packets that were read ahead, as many as one turn of the event loop may take. */
    void catchUp();
    /** Whether packets were read ahead that catchUp() has yet to handle. */
    bool isBehind() const { return !m_behind.empty(); }

private:
    struct Process {
        uint64_t next = 1;
        std::vector<Client *> clients;
    };

    void bind(Client &client, uint64_t process);
    void readAhead(Client &client);
    void readAheadAll(uint64_t process);
    Client *lowest(uint64_t process);
    void handleLowest(Client &client);
    bool fallBehind(uint64_t process);
    void end(Client &client);

    Handler &m_handler;
    std::unordered_map<uint64_t, Process> m_processes;
    /** Clients that have sent nothing yet. */
    std::vector<Client *> m_fresh;
    /** Processes of which packets were read ahead, the one whose turn it is in front. */
    std::deque<uint64_t> m_behind;
    char m_buffer[MaximumRequest];
};

} // namespace voro::pps
