#pragma once

#include "Broker.h"
#include "Hub.h"
#include "Order.h"
#include "ReadWatch.h"

#include <pps/Acceptor.h>

#include <memory>
#include <unordered_map>
#include <vector>

struct epoll_event;

namespace voro::pps {

inline Reply makeReply(Reply::Type type, int error = 0)
{
    Reply reply{};
    reply.type = type;
    reply.error = static_cast<uint16_t>(error);
    return reply;
}

/** The broker at work: clients, their packets, and what they subscribed to. */
class Broker::Private final : public Order::Handler {
public:
    /** In an epoll event, before the number of a service's descriptor. */
    static constexpr uint64_t WatchedEvent = uint64_t(1) << 62;

    Private();

    void addListener(int socket);
    void watch(int operation, int fd, uint64_t about, uint32_t events);

    // Clients.
    Client *addClient(Fd socket, uint64_t adopted, std::string_view onlyPath = {});
    Client *find(ClientId id) const;
    void acceptPending() override;
    void condemn(Client &client);
    void settle();
    void makeRoom();
    void detach(Client &client);
    void afterSend(Client &client);
    void closeWhenFlushed(Client &client);
    void endService(Endpoint &endpoint);
    /** A text for clients to keep, charged to a process; null when that cannot have it. */
    Kept makeKept(std::string_view text, pid_t payer, uint64_t shownBy = 0);
    void setWill(const std::string &folder, const Kept &will);
    void keepLater(Client &client);
    void sendKept();
    void wakeUp();
    void notifyReader(ClientId id);

    // Packets.
    void handlePacket(Client &client, const ClientPacket &packet) override;
    void handleEnd(Client &client) override;
    void handleGarbage(Client &client) override { condemn(client); }
    void dispatch(Client &client, const ClientPacket &packet);
    void open(Client &client, const ClientPacket &packet);
    bool mayOpen(const Client &client, const ObjectPath &path, unsigned mode) const;
    int openService(Client &client);
    int openPlain(Client &client, Reply &reply, bool knowsWill);
    bool write(Client &client, std::string_view text);
    bool pull(Client &client, const ClientPacket &packet);
    void notify(Object *object);
    void push(Client &client, const Object &object);
    void process();
    void processEvent(const epoll_event &event);

    Fd epoll;
    Fd wake;
    ReadWatch readers;
    Acceptor acceptor;
    std::vector<Fd> listeners;
    /** Folders, with a slash at the end, in which clients can write nothing. */
    std::vector<std::string> reserved;
    /** Outlives all that is charged. */
    Accounts accounts;
    std::unordered_map<ClientId, std::unique_ptr<Client>> clients;
    std::unordered_map<pid_t, int> clientsOfProcess;
    Store store{accounts};
    Order order;
    Hub hub;
    /** Descriptors of services. */
    std::unordered_map<int, std::shared_ptr<const std::function<void()>>> watched;
    std::vector<Client *> condemned;
    /** Clients that get a text to keep even if nothing else is sent to them. */
    std::vector<ClientId> keepers;
    /** Distinguishes this broker from every other one. */
    uint64_t number = 0;
    /** Detached clients that a caller further up may still refer to. */
    std::vector<std::unique_ptr<Client>> graveyard;
    std::function<void()> countChanged;
    ClientId lastId = 0;
    size_t count = 0;
    size_t reportedCount = 0;
    /** How many connections may still be accepted before others have their turn. */
    int mayAccept = 0;
    bool isProcessing = false;
};

} // namespace voro::pps
