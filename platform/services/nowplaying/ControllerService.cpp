#include "ControllerService.h"

#include <services/common/Request.h>

namespace voro::nowplaying {

namespace {

constexpr std::string_view ControlPath = "/pps/services/multimedia/mediacontroller/control";
/** The longest time that a new subscriber waits for a fresh report of the source. */
constexpr int MaximumWait = 200;

/** What a subscriber reads when the daemon is gone, and the source with it. */
std::string sourceGone()
{
    std::string messages;
    for (const QByteArray &lines :
         {makeMessage("m_active_pid", 0), makeMessage("m_state", toText(State::Stopped)), makeUpdate({})}) {
        messages += ControlLine + lines.toStdString();
    }
    return messages;
}

} // namespace

ControllerService::ControllerService(pps::Broker &broker, Listener &listener)
    : m_broker(broker),
      m_listener(listener),
      m_audience(broker)
{
    m_wait.setSingleShot(true);
    m_wait.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_wait, &QTimer::timeout, [this] { release(); });
    setSource(0);
    m_broker.serve(ControlPath, this);
}

ControllerService::~ControllerService()
{
    m_broker.unserve(ControlPath);
}

void ControllerService::setSource(qint64 process)
{
    m_audience.set(Audience::ActivePid, makeMessage("m_active_pid", process));
    m_audience.drop(Audience::TrackChange);
    m_audience.set(Audience::State, makeMessage("m_state", toText(State::Stopped)));
    m_audience.set(Audience::Update, makeUpdate({}));
}

void ControllerService::reportSource(qint64 process)
{
    setSource(process);
    m_audience.send();
}

void ControllerService::reportState(State state)
{
    m_audience.set(Audience::State, makeMessage("m_state", toText(state)));
    m_audience.send();
}

void ControllerService::reportMetadata(const Metadata &metadata)
{
    m_audience.set(Audience::Update, makeUpdate(metadata));
    release();
}

void ControllerService::renewMetadata(const Metadata &metadata)
{
    m_audience.renew(Audience::Update, makeUpdate(metadata));
}

void ControllerService::reportTrackChange()
{
    m_audience.set(Audience::TrackChange, makeMessage("m_state", "trackchange"));
    m_audience.send();
}

void ControllerService::release()
{
    m_wait.stop();
    m_heldBack = 0;
    m_audience.release();
}

void ControllerService::clientOpened(pps::ClientId, const pps::Peer &)
{
    m_listener.controllerOpened();
}

void ControllerService::clientClosed(pps::ClientId client)
{
    unsubscribe(client);
}

void ControllerService::clientMessage(pps::ClientId client, std::string_view text)
{
    const QVariantMap message = parseMessage(text);
    const QString name = message.value("msg").toString();
    if (name == "md_subscribe") {
        subscribe(client);
    } else if (name == "md_unsubscribe") {
        unsubscribe(client);
    } else {
        m_listener.commanded(parseCommand(message), [this, client, name](const QString &problem) {
            if (!problem.isEmpty()) {
                m_broker.send(client, makeFailure(name.toStdString(), problem.toStdString()));
            }
        });
    }
}

void ControllerService::subscribe(pps::ClientId client)
{
    m_heldBack |= m_listener.subscribing();
    if (m_heldBack != 0 && !m_wait.isActive()) {
        m_wait.start(MaximumWait);
    }
    m_broker.setWill(client, sourceGone());
    m_broker.setReturn(client, ControlLine + std::string("msg::md_subscribe\n"));
    m_audience.add(client, m_heldBack);
    m_listener.subscribersChanged();
}

void ControllerService::unsubscribe(pps::ClientId client)
{
    if (m_audience.has(client)) {
        m_audience.remove(client);
        m_broker.setWill(client, {});
        m_broker.setReturn(client, {});
        m_listener.subscribersChanged();
    }
}

} // namespace voro::nowplaying
