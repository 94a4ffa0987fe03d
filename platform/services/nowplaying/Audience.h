#pragma once

#include <QtCore/QByteArray>

#include <pps/broker/Broker.h>

#include <array>
#include <unordered_map>

namespace voro::nowplaying {

/**
 * The subscribers, and the messages that each of them has yet to get. A subscriber that has unread messages gets no
 * more until it has read them, and then only the newest message of each kind.
 */
class Audience {
public:
    /** The kinds of messages, in the order in which they are sent. */
    enum Kind : unsigned { ActivePid, TrackChange, State, Update };
    static constexpr unsigned KindCount = 4;
    /** A set of kinds. */
    using Kinds = unsigned;
    static constexpr Kinds bit(Kind kind) { return 1U << kind; }
    static constexpr Kinds Lasting = 1U << ActivePid | 1U << State | 1U << Update;

    explicit Audience(pps::Broker &broker) : m_broker(broker) {}

    bool isEmpty() const { return m_subscribers.empty(); }
    bool has(pps::ClientId client) const { return m_subscribers.contains(client); }
    /** A new subscriber gets the newest messages of the lasting kinds; those held back follow when released. */
    void add(pps::ClientId client, Kinds heldBack);
    void remove(pps::ClientId client) { m_subscribers.erase(client); }
    void release();

    /** Replaces a message; it is sent by the next send(). */
    void set(Kind kind, const QByteArray &lines);
    /** Replaces a message for those who have yet to get it. */
    void renew(Kind kind, const QByteArray &lines) { m_newest[kind] = lines; }
    /** What was set and not sent yet is not to be sent. */
    void drop(Kind kind);
    /** Sends what was set to everybody who can take it. */
    void send();
    /** The client, which was behind, has read everything. */
    void hasRead(pps::ClientId client);

private:
    struct Subscriber {
        Kinds pending;
        Kinds heldBack;
        /** It got no message yet. */
        bool isNew = true;
    };

    void send(pps::ClientId client, Subscriber &subscriber);

    pps::Broker &m_broker;
    std::array<QByteArray, KindCount> m_newest;
    std::unordered_map<pps::ClientId, Subscriber> m_subscribers;
};

} // namespace voro::nowplaying
