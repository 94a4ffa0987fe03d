#include "BrokerPrivate.h"

#include <fcntl.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

namespace voro::pps {

namespace {

constexpr size_t MaximumUnread = 1024 * 1024;
constexpr int MaximumEvents = 64;
/** The listening sockets stay readable while more wait. */
constexpr int MaximumAccepted = 64;

/** Stands for all processes whose number is not known here, in another namespace. */
constexpr pid_t UnknownProcess = -1;

/** The subject of an epoll event: a client's ID, or one of these. */
constexpr uint64_t WakeEvent = 0;
constexpr uint64_t ListenEvent = UINT64_MAX;
constexpr uint64_t ReadEvent = UINT64_MAX - 1;

} // namespace

Broker::Private::Private()
    : epoll(epoll_create1(EPOLL_CLOEXEC)),
      wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      order(*this),
      hub([this](Client &client) { afterSend(client); })
{
    watch(EPOLL_CTL_ADD, wake.get(), WakeEvent, EPOLLIN);
    watch(EPOLL_CTL_ADD, readers.fd(), ReadEvent, EPOLLIN);
    while (getrandom(&number, sizeof number, 0) != sizeof number) {
    }
}

void Broker::Private::addListener(int socket)
{
    fcntl(socket, F_SETFL, fcntl(socket, F_GETFL) | O_NONBLOCK);
    listeners.emplace_back(socket);
    watch(EPOLL_CTL_ADD, socket, ListenEvent, EPOLLIN);
}

void Broker::Private::watch(int operation, int fd, uint64_t about, uint32_t events)
{
    epoll_event event{};
    event.events = events;
    event.data.u64 = about;
    epoll_ctl(epoll.get(), operation, fd, &event);
}

// --- Clients

Client *Broker::Private::addClient(Fd socket, uint64_t adopted, std::string_view onlyPath)
{
    ucred credentials{};
    socklen_t size = sizeof credentials;
    if (getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0) {
        return nullptr;
    }
    const ClientId id = adopted ? adopted : ++lastId;
    const int fd = socket.get();
    const pid_t process = credentials.pid > 0 ? credentials.pid : UnknownProcess;
    auto client = std::make_unique<Client>(id, std::move(socket), Peer{process, adopted});
    client->onlyPath = onlyPath;
    // The sockets of workers are charged to the services.
    const pid_t payer = onlyPath.empty() ? process : Accounts::Services;
    client->connection = accounts.take(payer, Resource::Connections);
    client->memory = accounts.take(payer, Resource::Memory, client->cost());
    const bool isOurUser = credentials.uid == geteuid();
    if (!isOurUser || !client->connection.isValid() || !client->memory.isValid()) {
        client->send(makeReply(Reply::Opened, isOurUser ? ENFILE : EACCES), {}, {});
        return nullptr;
    }
    ++clientsOfProcess[payer];
    count += !adopted;
    watch(EPOLL_CTL_ADD, fd, id, EPOLLIN);
    client->subscriber.client = client.get();
    Client &added = *client;
    clients[id] = std::move(client);
    order.add(added);
    return &added;
}

Client *Broker::Private::find(ClientId id) const
{
    const auto found = clients.find(id);
    return found == clients.end() ? nullptr : found->second.get();
}

void Broker::Private::acceptPending()
{
    for (const Fd &listener : listeners) {
        Fd socket;
        for (; mayAccept > 0 && acceptor.accept(listener.get(), socket); --mayAccept) {
            if (socket.isValid()) {
                addClient(std::move(socket), 0);
            }
        }
    }
}

// Ends a client at the next safe moment: this may be called while lists of clients are walked.
void Broker::Private::condemn(Client &client)
{
    if (client.isCondemned) {
        return;
    }
    client.isCondemned = true;
    condemned.push_back(&client);
    wakeUp();
}

/** Has process() called when it is not at work. */
void Broker::Private::wakeUp()
{
    if (!isProcessing) {
        eventfd_write(wake.get(), 1);
    }
}

void Broker::Private::settle()
{
    makeRoom();
    while (!condemned.empty()) {
        Client *const client = condemned.back();
        condemned.pop_back();
        detach(*client);
    }
}

// Here no list of objects or subscribers is being walked.
void Broker::Private::makeRoom()
{
    Object *object = nullptr;
    while (accounts.isOverfull() && store.removeOldestLeft(object)) {
        notify(object);
    }
}

void Broker::Private::detach(Client &client)
{
    order.remove(client);
    readers.remove(client);
    store.unsubscribe(client.subscriber);
    if (client.endpoint && client.endpoint->server == &client) {
        endService(*client.endpoint);
    } else if (client.endpoint) {
        hub.removeClient(client);
    }
    // A process that sees this can see the consequences of its end.
    if (client.isOpen() && !client.isEnded && !client.hasClosed) {
        client.sayClosed();
    }
    watch(EPOLL_CTL_DEL, client.fd(), 0, 0);
    const auto ofProcess = clientsOfProcess.find(client.payer());
    if (--ofProcess->second == 0) {
        clientsOfProcess.erase(ofProcess);
        store.leave(client.payer());
    }
    count -= client.peer.adopted == 0;
    const auto found = clients.find(client.id);
    graveyard.push_back(std::move(found->second));
    clients.erase(found);
}

void Broker::Private::afterSend(Client &client)
{
    if (client.queuedSize() > MaximumUnread || !client.memory.resize(client.cost())) {
        condemn(client);
    } else if (client.isQueued() != client.isWatchedForWriting) {
        client.isWatchedForWriting = client.isQueued();
        watch(EPOLL_CTL_MOD, client.fd(), client.id, client.isQueued() ? EPOLLIN | EPOLLOUT : EPOLLIN);
    }
}

void Broker::Private::closeWhenFlushed(Client &client)
{
    client.isClosing = true;
    client.sayClosed();
    if (!client.isQueued()) {
        condemn(client);
    }
}

void Broker::Private::endService(Endpoint &endpoint)
{
    for (Client *client : hub.remove(endpoint)) {
        closeWhenFlushed(*client);
    }
}

Kept Broker::Private::makeKept(std::string_view text, pid_t payer, uint64_t shownBy)
{
    if (text.empty() || text.size() > MaximumKept) {
        return nullptr;
    }
    auto charge = accounts.take(payer, Resource::Memory, sizeof(KeptText) + text.size());
    return charge.isValid() ? std::make_shared<const KeptText>(KeptText{std::string(text), shownBy, std::move(charge)})
                            : nullptr;
}

void Broker::Private::setWill(const std::string &folder, const Kept &will)
{
    store.setWill(folder, will);
    if (Endpoint *endpoint = hub.find(folder + "/control")) {
        endpoint->will = will;
    }
}

void Broker::Private::keepLater(Client &client)
{
    if (client.hasToKeep()) {
        keepers.push_back(client.id);
        wakeUp();
    }
}

void Broker::Private::sendKept()
{
    for (const ClientId id : std::exchange(keepers, {})) {
        if (Client *client = find(id); client && client->hasToKeep() && !client->isCondemned) {
            client->send(makeReply(Reply::Keep), {}, {});
            afterSend(*client);
        }
    }
}

void Broker::Private::notifyReader(ClientId id)
{
    if (Client *client = find(id); client && client->endpoint && client->endpoint->service) {
        client->endpoint->service->clientHasRead(id);
    }
}

// --- Events

void Broker::Private::process()
{
    isProcessing = true;
    epoll_event events[MaximumEvents];
    int ready;
    do {
        ready = epoll_wait(epoll.get(), events, MaximumEvents, 0);
    } while (ready < 0 && errno == EINTR);
    mayAccept = MaximumAccepted;
    order.catchUp();
    for (int i = 0; i < ready; ++i) {
        processEvent(events[i]);
        settle();
    }
    sendKept();
    settle();
    isProcessing = false;
    if (order.isBehind()) {
        wakeUp();
    }
    graveyard.clear();
    accounts.trim();
    if (count != reportedCount) {
        reportedCount = count;
        if (countChanged) {
            countChanged();
        }
    }
}

void Broker::Private::processEvent(const epoll_event &event)
{
    if (event.data.u64 == WakeEvent) {
        eventfd_t ignored;
        eventfd_read(wake.get(), &ignored);
        return;
    }
    if (event.data.u64 == ListenEvent) {
        acceptPending();
        return;
    }
    if (event.data.u64 == ReadEvent) {
        for (const ClientId id : readers.takeRead()) {
            notifyReader(id);
        }
        return;
    }
    if (event.data.u64 & WatchedEvent) {
        const auto found = watched.find(static_cast<int>(event.data.u64 & ~WatchedEvent));
        if (found != watched.end()) {
            // The callback may end the watch.
            const auto callback = found->second;
            (*callback)();
        }
        return;
    }
    Client *const client = find(event.data.u64);
    if (!client) {
        return;
    }
    if (event.events & EPOLLOUT) {
        client->flush();
        afterSend(*client);
        if (client->isClosing && !client->isQueued()) {
            condemn(*client);
        }
    }
    if (!client->isCondemned && (event.events & ~static_cast<uint32_t>(EPOLLOUT))) {
        order.readable(*client);
    }
}

} // namespace voro::pps
