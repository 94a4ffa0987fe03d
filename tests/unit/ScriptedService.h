#pragma once

#include "RuntimeBroker.h"

#include <voro/PpsObject.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <condition_variable>
#include <deque>
#include <mutex>

/**
 * A service in the broker's own thread that answers by a script, so that it answers a client that blocks. Messages are
 * PPS text with "|" for the ends of lines.
 */
class ScriptedService : public voro::pps::Service {
public:
    ScriptedService(RuntimeBroker &broker, const QString &path);
    ~ScriptedService() override;

    /** What to send to a client that has written a message with this text in it. An answer "gone" ends the service. */
    void answer(const QString &text, const QStringList &answers);
    /** Sends a message to every client. */
    void send(const QString &message);
    /** Ends the service. */
    void stop();
    /** What came next: "opened", "closed" or a message as it was written. */
    QString next();
    /** The next so many. */
    QStringList next(int count);
    /** What came since the last call; everything that the library has written by now is among it. */
    QStringList take();

    void clientOpened(voro::pps::ClientId client, const voro::pps::Peer &peer) override;
    void clientMessage(voro::pps::ClientId client, std::string_view text) override;
    void clientClosed(voro::pps::ClientId client) override;

private:
    void arrived(const QString &event);

    voro::pps::BrokerThread &m_thread;
    /** Used in the broker's thread only. */
    voro::pps::Broker *m_broker = nullptr;
    const std::string m_path;
    /** What it writes is handled after all that the library's objects have written. */
    voro::PpsObject m_marker;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<QString> m_events;
    QList<std::pair<QString, QStringList>> m_script;
};
