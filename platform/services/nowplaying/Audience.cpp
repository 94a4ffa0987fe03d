#include "Audience.h"

#include "Messages.h"

namespace voro::nowplaying {

void Audience::add(pps::ClientId client, Kinds heldBack)
{
    Subscriber &subscriber = m_subscribers[client];
    subscriber = {Lasting, heldBack};
    send(client, subscriber);
}

void Audience::release()
{
    for (auto &[client, subscriber] : m_subscribers) {
        subscriber.heldBack = 0;
    }
    send();
}

void Audience::set(Kind kind, const QByteArray &lines)
{
    m_newest[kind] = lines;
    for (auto &[client, subscriber] : m_subscribers) {
        subscriber.pending |= bit(kind);
    }
}

void Audience::drop(Kind kind)
{
    for (auto &[client, subscriber] : m_subscribers) {
        subscriber.pending &= ~bit(kind);
    }
}

void Audience::send()
{
    for (auto &[client, subscriber] : m_subscribers) {
        send(client, subscriber);
    }
}

void Audience::hasRead(pps::ClientId client)
{
    if (const auto found = m_subscribers.find(client); found != m_subscribers.end()) {
        send(client, found->second);
    }
}

void Audience::send(pps::ClientId client, Subscriber &subscriber)
{
    // A newcomer that asks for one value gets it before it learns whether there is a source at all.
    static constexpr Kind FirstOrder[] = {State, Update, ActivePid, TrackChange};
    static constexpr Kind Order[] = {ActivePid, TrackChange, State, Update};
    const Kinds due = subscriber.pending & ~subscriber.heldBack;
    if (due == 0) {
        return;
    }
    if (m_broker.isBehind(client)) {
        m_broker.notifyWhenRead(client);
        return;
    }
    for (const Kind kind : subscriber.isNew ? FirstOrder : Order) {
        if (due & bit(kind)) {
            m_broker.send(client, view(m_newest[kind]));
        }
    }
    subscriber.isNew = false;
    subscriber.pending &= ~due;
}

} // namespace voro::nowplaying
