#pragma once

#include "Messages.h"

#include <pps/broker/Broker.h>

#include <unordered_map>

namespace voro::nowplaying {

/** The connection that has the role. */
struct Holder {
    pps::ClientId client = 0;
    qint64 process = 0;
    QString name;
    bool isHigh = false;

    bool operator==(const Holder &other) const = default;
};

/**
 * What serves the media player's control object: gives the role to one of them at a time, shows which in the status
 * object, and takes the holder's reports.
 */
class RoleService : public pps::Service {
public:
    class Listener {
    public:
        virtual ~Listener() = default;
        /** The role went to another connection or fell free. The new holder does not know it yet. */
        virtual void holderChanged() = 0;
        /** The new holder knows that it has the role. */
        virtual void holderAnswered() = 0;
        /** The holder registered anew, under another name. */
        virtual void holderRenamed() = 0;
        virtual void holderReportedState(State state) = 0;
        virtual void holderReportedMetadata(const Metadata &metadata) = 0;
        virtual void holderChangedTrack() = 0;
    };

    RoleService(pps::Broker &broker, Listener &listener);
    RoleService(const RoleService &) = delete;
    RoleService &operator=(const RoleService &) = delete;

    /** Null while the role is free. */
    const Holder *holder() const { return m_holder.client ? &m_holder : nullptr; }
    /** Sends the holder a "track" message. Nothing happens while the role is free. */
    void command(const QVariant &data);

    void clientOpened(pps::ClientId client, const pps::Peer &peer) override;
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override;

private:
    struct Connection {
        qint64 process = 0;
        Registration registration;
        /** Why it cannot have the role; empty after a good registration. */
        QString problem = QStringLiteral("not registered");
    };

    void enroll(pps::ClientId client, const QVariant &data);
    void acquire(pps::ClientId client);
    void refuse(pps::ClientId client, const QString &problem);
    void setHolder(const Holder &holder);
    void takeState(const QString &text);
    void publishStatus();

    pps::Broker &m_broker;
    Listener &m_listener;
    std::unordered_map<pps::ClientId, Connection> m_connections;
    Holder m_holder;
};

} // namespace voro::nowplaying
