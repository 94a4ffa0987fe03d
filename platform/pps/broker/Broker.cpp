#include "Broker.h"

#include "BrokerPrivate.h"

#include <pps/FdPassing.h>
#include <sys/epoll.h>

namespace voro::pps {

Broker::Broker() : d(std::make_unique<Private>()) {}

Broker::~Broker() = default;

void Broker::listen(int socket)
{
    refuseDescriptors(socket);
    d->addListener(socket);
}

uint64_t Broker::adopt(int socket, std::string_view onlyPath)
{
    const uint64_t id = ++d->lastId;
    return d->addClient(Fd(socket), id, onlyPath) ? id : 0;
}

void Broker::reserve(std::string_view folder)
{
    d->reserved.emplace_back(folder).append("/");
}

int Broker::fd() const
{
    return d->epoll.get();
}

void Broker::process()
{
    d->process();
}

size_t Broker::clientCount() const
{
    return d->count;
}

void Broker::leave()
{
    for (const auto &[id, client] : d->clients) {
        client->leave();
    }
}

void Broker::onClientCountChanged(std::function<void()> callback)
{
    d->countChanged = std::move(callback);
}

Accounts &Broker::accounts()
{
    return d->accounts;
}

void Broker::watch(int descriptor, std::function<void()> callback)
{
    d->watched[descriptor] = std::make_shared<const std::function<void()>>(std::move(callback));
    d->watch(EPOLL_CTL_ADD, descriptor, Private::WatchedEvent | static_cast<uint64_t>(descriptor), EPOLLIN);
}

void Broker::unwatch(int descriptor)
{
    if (d->watched.erase(descriptor) > 0) {
        d->watch(EPOLL_CTL_DEL, descriptor, 0, 0);
    }
}

bool Broker::publish(std::string_view path, std::string_view text, Fence fence, pid_t payer)
{
    ObjectPath parsed;
    Object *object = nullptr;
    if (!parsePath(path, parsed) || !isOpenable(parsed, Publish) || parsed.isService() || text.size() > MaximumMessage
        || !isWritable(parsed, text) || !d->store.publish(parsed, text, fence == Fence::Hold, payer, object)) {
        return false;
    }
    d->notify(object);
    return true;
}

void Broker::remove(std::string_view path)
{
    ObjectPath parsed;
    if (parsePath(path, parsed)) {
        for (Object *object : d->store.remove(parsed)) {
            d->notify(object);
        }
    }
}

void Broker::setWill(std::string_view folder, std::string_view text, uint64_t shownBy, pid_t payer)
{
    d->setWill(std::string(folder), d->makeKept(text, payer, shownBy));
}

uint64_t Broker::nextVersion() const
{
    return d->store.version() + 1;
}

void Broker::beginReturn(std::string_view folder)
{
    d->store.beginReturn(std::string(folder));
}

void Broker::endReturn(std::string_view folder)
{
    d->store.endReturn(std::string(folder));
}

std::string Broker::content(std::string_view path) const
{
    ObjectPath parsed;
    return parsePath(path, parsed) ? d->store.content(parsed) : std::string();
}

bool Broker::serve(std::string_view path, Service *service)
{
    ObjectPath parsed;
    if (!parsePath(path, parsed) || !parsed.isService()) {
        return false;
    }
    Endpoint *const endpoint = d->hub.add(parsed.path());
    if (endpoint) {
        endpoint->service = service;
    }
    return endpoint != nullptr;
}

void Broker::unserve(std::string_view path)
{
    if (Endpoint *endpoint = d->hub.find(std::string(path)); endpoint && endpoint->service) {
        d->endService(*endpoint);
    }
}

bool Broker::send(ClientId id, std::string_view lines)
{
    Client *const client = d->find(id);
    return !client || client->isCondemned || !client->endpoint || d->hub.toClient(*client, lines);
}

bool Broker::sendAll(std::string_view path, std::string_view lines)
{
    Endpoint *const endpoint = d->hub.find(std::string(path));
    return !endpoint || d->hub.toAll(*endpoint, lines);
}

void Broker::setWill(ClientId id, std::string_view messages)
{
    if (Client *client = d->find(id)) {
        if (client->will ? client->will->text != messages : !messages.empty()) {
            client->will = d->makeKept(messages, client->payer());
            d->keepLater(*client);
        }
    }
}

void Broker::setReturn(ClientId id, std::string_view text)
{
    if (Client *client = d->find(id)) {
        if (client->back ? client->back->text != text : !text.empty()) {
            client->back = d->makeKept(text, client->payer());
            d->keepLater(*client);
        }
    }
}

bool Broker::isBehind(ClientId id) const
{
    const Client *const client = d->find(id);
    return client && client->reads() && !client->hasReadAll();
}

void Broker::notifyWhenRead(ClientId id)
{
    if (Client *client = d->find(id); client && !client->isCondemned) {
        d->readers.add(*client);
    }
}

void Broker::disconnect(ClientId id)
{
    if (Client *client = d->find(id)) {
        d->condemn(*client);
    }
}

} // namespace voro::pps
