#include "BrokerPrivate.h"
#include "Listing.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace voro::pps {

namespace {

std::string_view asBytes(const std::vector<Held> &held)
{
    return {reinterpret_cast<const char *>(held.data()), held.size() * sizeof(Held)};
}

bool parseHeld(std::string_view body, std::vector<Held> &held)
{
    if (body.size() % sizeof(Held) != 0 || body.size() / sizeof(Held) > MaximumHeld) {
        return false;
    }
    held.resize(body.size() / sizeof(Held));
    if (!held.empty()) {
        std::memcpy(held.data(), body.data(), body.size());
    }
    return true;
}

} // namespace

void Broker::Private::handlePacket(Client &client, const ClientPacket &packet)
{
    if (!client.isCondemned && !client.isClosing) {
        dispatch(client, packet);
    }
    settle();
}

void Broker::Private::handleEnd(Client &client)
{
    condemn(client);
    settle();
}

void Broker::Private::dispatch(Client &client, const ClientPacket &packet)
{
    bool isGood = client.isOpen() == (packet.header.type != Request::Open);
    if (isGood) {
        switch (packet.header.type) {
        case Request::Open:
            open(client, packet);
            break;
        case Request::Write:
            isGood = write(client, packet.body);
            break;
        case Request::Pull:
            isGood = pull(client, packet);
            break;
        case Request::Close:
            client.hasClosed = true;
            isGood = false;
            break;
        default:
            isGood = false;
        }
    }
    if (!isGood) {
        condemn(client);
    }
}

void Broker::Private::open(Client &client, const ClientPacket &packet)
{
    Reply reply = makeReply(Reply::Opened);
    ObjectPath path;
    int error = 0;
    if (packet.header.version != WireVersion) {
        error = EPROTO;
    } else if (!parsePath(packet.body, path) || !isOpenable(path, packet.header.mode)) {
        error = EINVAL;
    } else if (!mayOpen(client, path, packet.header.mode)) {
        error = EACCES;
    } else {
        client.path = std::move(path);
        client.mode = packet.header.mode;
        error = client.path.isService() ? openService(client) : openPlain(client, reply, packet.header.knowsWill != 0);
    }
    if (error != 0) {
        client.mode = 0;
        reply.error = static_cast<uint16_t>(error);
        condemn(client);
    }
    reply.from = number;
    client.send(reply, {}, {});
    if (error == 0 && client.path.isService() && !client.path.server) {
        // After the answer, because the service may send at once.
        hub.addClient(*hub.find(client.path.path()), client);
    }
}

// What this process serves and publishes is its own, and an adopted client may have been given one object.
bool Broker::Private::mayOpen(const Client &client, const ObjectPath &path, unsigned mode) const
{
    const std::string whole = path.path();
    if (!client.onlyPath.empty()) {
        return client.onlyPath == whole && !path.server;
    }
    const bool isReserved = std::any_of(reserved.begin(), reserved.end(),
                                        [&](const std::string &folder) { return whole.starts_with(folder); });
    return !isReserved || !(path.isService() ? path.server : (mode & Publish) != 0);
}

int Broker::Private::openService(Client &client)
{
    if (!client.path.server) {
        return hub.find(client.path.path()) ? 0 : ENXIO;
    }
    Endpoint *const endpoint = hub.add(client.path.path());
    if (!endpoint) {
        return EBUSY;
    }
    endpoint->server = &client;
    client.endpoint = endpoint;
    return 0;
}

int Broker::Private::openPlain(Client &client, Reply &reply, bool knowsWill)
{
    if (client.path.isListing()) {
        reply.more = true;
        return 0;
    }
    if (!client.reads()) {
        return 0;
    }
    store.subscribe(client.path, client.subscriber);
    client.subscriber.knowsWill = knowsWill;
    // The present content waits for the first read: nothing is pushed before the reader pulls.
    ReaderPosition position;
    client.isMarked = !store.read(client.subscriber, position).empty();
    client.sentVersion = store.version();
    reply.more = client.isMarked;
    if (!client.isMarked) {
        reply.to = {client.sentVersion, client.sentVersion};
    }
    return 0;
}

bool Broker::Private::write(Client &client, std::string_view text)
{
    if (!(client.mode & Publish) || text.size() > MaximumMessage || !isWritable(client.path, text)) {
        return false;
    }
    if (client.path.server) {
        hub.fromServer(*client.endpoint, text);
    } else if (client.endpoint) {
        hub.toServer(client, text);
    } else {
        Object *object = nullptr;
        if (!store.publish(client.path, text, false, client.payer(), object)) {
            return false;
        }
        notify(object);
    }
    return true;
}

bool Broker::Private::pull(Client &client, const ClientPacket &packet)
{
    ReaderPosition position{packet.header.seen, {}};
    Reply reply = makeReply(Reply::Answer);
    std::string text;
    if (client.path.isListing()) {
        text = listFolder(client.path.folder, store.pathsBelow(client.path.folder), hub.paths(), position.position);
    } else if (client.subscriber.folder && parseHeld(packet.body, position.held)) {
        text = store.read(client.subscriber, position);
        client.sentVersion = position.position.base;
        client.isMarked = !position.isSettled();
        client.mayHoldText = !text.empty();
    } else {
        return false;
    }
    reply.to = position.position;
    reply.heldCount = static_cast<uint16_t>(position.held.size());
    reply.more = !position.isSettled();
    client.send(reply, asBytes(position.held), text);
    // A reader waits for each answer; one that piles them up is none.
    return !client.isQueued();
}

void Broker::Private::notify(Object *object)
{
    if (!object) {
        return;
    }
    for (Subscriber *subscriber : object->subscribers) {
        push(*subscriber->client, *object);
    }
    for (Subscriber *subscriber : object->folder->subscribers) {
        push(*subscriber->client, *object);
    }
}

// Tells a reader of a change: the change itself when nothing else waits to be read, else that there is one.
void Broker::Private::push(Client &client, const Object &object)
{
    if (client.isMarked || client.isCondemned) {
        return;
    }
    ReaderPosition position{{client.sentVersion, client.sentVersion}, {}};
    const std::string text = store.read(client.subscriber, position);
    if (text.empty() && !(client.mayHoldText && object.content.mayContradict(client.subscriber.selection))) {
        return;
    }
    if (text.empty() || !client.hasReadAll()) {
        client.isMarked = true;
        client.send(makeReply(Reply::Mark), {}, {});
        afterSend(client);
        return;
    }
    Reply reply = makeReply(Reply::Change);
    reply.from = client.sentVersion;
    reply.to = position.position;
    reply.heldCount = static_cast<uint16_t>(position.held.size());
    reply.more = !position.isSettled();
    client.sentVersion = position.position.base;
    client.isMarked = reply.more;
    client.mayHoldText = true;
    client.send(reply, asBytes(position.held), text);
    afterSend(client);
}

} // namespace voro::pps
