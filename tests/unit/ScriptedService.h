#pragma once

#include "RuntimeBroker.h"

#include <voro/PpsObject.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

/**
 * A service in the broker's own thread that answers by a script, so that it answers a client that blocks. Messages are
 * PPS text with "|" for the ends of lines.
 */
class ScriptedService : public voro::pps::Service {
public:
    ScriptedService(RuntimeBroker &broker, const QString &path)
        : m_thread(broker.thread()),
          m_path(path.toStdString()),
          m_marker(path)
    {
        m_thread.run([this](voro::pps::Broker &present) {
            m_broker = &present;
            if (!present.serve(m_path, this)) {
                qFatal("cannot serve %s", m_path.c_str());
            }
        });
    }
    ~ScriptedService() override { stop(); }

    /** What to send to a client that has written a message with this text in it. An answer "gone" ends the service. */
    void answer(const QString &text, const QStringList &answers)
    {
        const std::lock_guard lock(m_mutex);
        m_script.prepend({text, answers});
    }
    /** Sends a message to every client. */
    void send(const QString &message)
    {
        m_thread.run([&](voro::pps::Broker &present) { present.sendAll(m_path, wireText(message)); });
    }
    /** Ends the service. */
    void stop()
    {
        m_thread.run([this](voro::pps::Broker &present) { present.unserve(m_path); });
    }
    /** What came next: "opened", "closed" or a message as it was written. */
    QString next()
    {
        std::unique_lock lock(m_mutex);
        if (!m_wake.wait_for(lock, std::chrono::seconds(60), [this] { return !m_events.empty(); })) {
            return QStringLiteral("nothing");
        }
        const QString event = m_events.front();
        m_events.pop_front();
        return event;
    }
    /** The next so many. */
    QStringList next(int count)
    {
        QStringList events;
        while (count-- > 0) {
            events += next();
        }
        return events;
    }
    /** What came since the last call; everything that the library has written by now is among it. */
    QStringList take()
    {
        const bool isFirst = !m_marker.isOpen();
        if ((isFirst && !m_marker.open(voro::PpsOpenMode::Publish)) || !m_marker.write("msg::marker")) {
            qFatal("the service cannot be reached");
        }
        QStringList events;
        for (QString event = next(); event != QLatin1String("msg::marker"); event = next()) {
            if (event == QLatin1String("nothing")) {
                qFatal("the marker is lost");
            }
            events += event;
        }
        return isFirst ? events.mid(0, events.size() - 1) : events;
    }

    void clientOpened(voro::pps::ClientId, const voro::pps::Peer &) override { arrived(QStringLiteral("opened")); }
    void clientMessage(voro::pps::ClientId client, std::string_view text) override
    {
        QString message = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
        message.replace(QLatin1Char('\n'), QLatin1Char('|'));
        QStringList answers;
        {
            const std::lock_guard lock(m_mutex);
            for (const auto &[part, known] : m_script) {
                if (message.contains(part)) {
                    answers = known;
                    break;
                }
            }
        }
        arrived(message);
        for (const QString &reply : answers) {
            if (reply == QLatin1String("gone")) {
                m_broker->unserve(m_path);
            } else {
                m_broker->send(client, wireText(reply));
            }
        }
    }
    void clientClosed(voro::pps::ClientId) override { arrived(QStringLiteral("closed")); }

private:
    static std::string wireText(QString message)
    {
        return message.replace(QLatin1Char('|'), QLatin1Char('\n')).toStdString();
    }
    void arrived(const QString &event)
    {
        const std::lock_guard lock(m_mutex);
        m_events.push_back(event);
        m_wake.notify_one();
    }

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
