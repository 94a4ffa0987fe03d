#include "RoleService.h"

#include <voro/PpsObject.h>

#include <services/common/Paths.h>
#include <services/common/Request.h>

namespace voro::nowplaying {

namespace {

std::string makeRevoke(qint64 process, const QString &name)
{
    return makeMessage("revoke", QVariantMap{{"pid", process}, {"name", name}}).toStdString();
}

} // namespace

RoleService::RoleService(pps::Broker &broker, Listener &listener) : m_broker(broker), m_listener(listener)
{
    publishStatus();
}

void RoleService::command(const QVariant &data)
{
    if (m_holder.client) {
        m_broker.send(m_holder.client, view(makeMessage("track", data)));
    }
}

void RoleService::clientOpened(pps::ClientId client, const pps::Peer &peer)
{
    m_connections[client].process = peer.process;
}

void RoleService::clientClosed(pps::ClientId client)
{
    m_connections.erase(client);
    if (client == m_holder.client) {
        setHolder({});
    }
}

void RoleService::clientMessage(pps::ClientId client, std::string_view text)
{
    const QVariantMap message = parseMessage(text);
    const QString name = message.value("msg").toString();
    const QVariant data = message.value("dat");
    if (name == "register") {
        enroll(client, data);
    } else if (name == "acquire") {
        acquire(client);
    } else if (client == m_holder.client && name == "state") {
        takeState(data.toString());
    } else if (client == m_holder.client && name == "metadata" && data.typeId() == QMetaType::QVariantMap) {
        m_listener.holderReportedMetadata(Metadata::fromMap(data.toMap()));
    }
}

void RoleService::enroll(pps::ClientId client, const QVariant &data)
{
    Connection &connection = m_connections[client];
    if (!parseRegistration(data, connection.registration, connection.problem) || client != m_holder.client) {
        return;
    }
    m_holder.isHigh = connection.registration.isHigh;
    if (m_holder.name != connection.registration.name) {
        m_holder.name = connection.registration.name;
        publishStatus();
        m_listener.holderRenamed();
    }
}

void RoleService::acquire(pps::ClientId client)
{
    const Connection &connection = m_connections[client];
    const auto &[name, isHigh] = connection.registration;
    if (!connection.problem.isEmpty()) {
        refuse(client, connection.problem);
        return;
    }
    const bool isNew = client != m_holder.client;
    if (isNew && m_holder.client && m_holder.isHigh && !isHigh) {
        refuse(client, "revoked");
        return;
    }
    if (isNew) {
        if (m_holder.client) {
            m_broker.setWill(m_holder.client, {});
            m_broker.send(m_holder.client, makeRevoke(connection.process, name));
        }
        // Nobody has the role when we are gone.
        m_broker.setWill(client, ControlLine + makeRevoke(0, {}));
        setHolder({client, connection.process, name, isHigh});
    }
    m_broker.send(client, view(PpsObject::encode({{"res", "acquire"}})));
    if (isNew) {
        m_listener.holderAnswered();
    }
}

void RoleService::refuse(pps::ClientId client, const QString &problem)
{
    m_broker.send(client, view(PpsObject::encode({{"res", "acquire"}, {"err", problem}})));
}

void RoleService::setHolder(const Holder &holder)
{
    m_holder = holder;
    publishStatus();
    m_listener.holderChanged();
}

void RoleService::takeState(const QString &text)
{
    if (text == "trackchange") {
        m_listener.holderChangedTrack();
    } else if (const auto state = toState(text)) {
        m_listener.holderReportedState(*state);
    }
}

void RoleService::publishStatus()
{
    m_broker.publish(MediaPlayerStatus,
                     view(PpsObject::encode({{"active_name", m_holder.name}, {"active_pid", m_holder.process}})));
}

} // namespace voro::nowplaying
