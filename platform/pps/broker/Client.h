#pragma once

#include "Broker.h"
#include "Store.h"

#include <pps/Fd.h>
#include <pps/Wire.h>

#include <deque>
#include <optional>
#include <string>
#include <utility>

namespace voro::pps {

struct Endpoint;

/** One packet of a client. */
struct ClientPacket {
    Request header{};
    std::string_view body;
};

/** A client's socket and the object that is open on it. */
class Client {
public:
    Client(ClientId clientId, Fd socket, const Peer &clientPeer)
        : id(clientId),
          peer(clientPeer),
          m_socket(std::move(socket))
    {}

    enum class Received { Packet, Nothing, End, Garbage };
    /** Takes the next packet from the socket; its body lies in the buffer, which holds MaximumRequest bytes. */
    Received receive(ClientPacket &packet, char *buffer);

    /**
     * Sends a packet, or keeps it until the socket takes it. What the client has yet to be given to keep goes along.
     */
    void send(Reply header, std::string_view held, std::string_view body);
    /** Announces that the socket is about to be closed; nothing is sent after that. */
    void sayClosed();
    /** Closes the socket without that. */
    void leave();
    /** Whether the client still has to get a text to keep. */
    bool hasToKeep() const { return isOpen() && reads() && (will != m_will || back != m_back); }
    /** Sends what was kept; to be called when the socket is writable. */
    void flush();
    /** Whether packets wait for the socket to take them. */
    bool isQueued() const { return !m_queue.empty(); }
    /** How many bytes of packets the socket did not take yet. */
    size_t queuedSize() const { return m_queuedSize; }
    /** The memory of the client's packets. */
    size_t cost() const;
    /** Whether the client has read everything that was sent. */
    bool hasReadAll() const;

    int fd() const { return m_socket.get(); }
    bool isOpen() const { return mode != 0; }
    bool reads() const { return (mode & Subscribe) != 0; }

    const ClientId id;
    const Peer peer;
    /** The connection, and what it takes. */
    Accounts::Charge connection;
    Accounts::Charge memory;
    /** The process that both are charged to. */
    pid_t payer() const { return memory.process(); }

    /** Unless empty, the only object that the client may open. */
    std::string onlyPath;

    // Texts that it keeps for the loss of this broker.
    Kept will;
    Kept back;

    // The open object.
    unsigned mode = 0;
    ObjectPath path;
    /** The service object whose client or server this is. */
    Endpoint *endpoint = nullptr;
    Subscriber subscriber;
    /** A subscriber that got the mark that there is more, and has not pulled since. */
    bool isMarked = false;
    /** Whether a subscriber may have received a text that it has not read yet. */
    bool mayHoldText = false;
    /** The version that a subscriber has seen once it has read everything sent. */
    uint64_t sentVersion = 0;

    // The order of packets.
    /** The number of the process that sent the last packet; 0 before the first. */
    uint64_t process = 0;
    bool isEnded = false;
    /** How many packets its process left that were handled since it ended. */
    int leftOver = 0;
    /** Keeps a packet that was read ahead of its turn. */
    void keep(const ClientPacket &packet) { m_kept.emplace(packet.header, std::string(packet.body)); }
    bool hasPacket() const { return m_kept.has_value(); }
    uint64_t packetNumber() const { return m_kept->first.number; }
    std::pair<Request, std::string> takePacket() { return *std::exchange(m_kept, std::nullopt); }

    // The end.
    /** It announced its end. */
    bool hasClosed = false;
    /** No packet of the client counts any more, and its socket will be closed. */
    bool isCondemned = false;
    /** Its service went: closed as soon as the socket has taken what is queued. */
    bool isClosing = false;
    bool isWatchedForWriting = false;

private:
    bool trySend(std::string_view packet);
    std::string makePacket(Reply &header, std::string_view held, std::string_view body);
    const Kept &folderWill() const;

    Fd m_socket;
    std::optional<std::pair<Request, std::string>> m_kept;
    std::deque<std::string> m_queue;
    size_t m_queuedSize = 0;
    bool m_isPeerGone = false;
    bool m_saidClosed = false;
    // Texts that it has got to keep.
    Kept m_folderWill;
    Kept m_will;
    Kept m_back;
};

} // namespace voro::pps
