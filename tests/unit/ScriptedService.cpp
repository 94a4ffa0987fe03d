#include "ScriptedService.h"

#include <chrono>

namespace {

constexpr std::chrono::seconds Patience(60);

std::string wireText(QString message)
{
    return message.replace(QLatin1Char('|'), QLatin1Char('\n')).toStdString();
}

} // namespace

ScriptedService::ScriptedService(RuntimeBroker &broker, const QString &path)
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

ScriptedService::~ScriptedService()
{
    stop();
}

void ScriptedService::answer(const QString &text, const QStringList &answers)
{
    const std::lock_guard lock(m_mutex);
    m_script.prepend({text, answers});
}

void ScriptedService::send(const QString &message)
{
    m_thread.run([&](voro::pps::Broker &present) { present.sendAll(m_path, wireText(message)); });
}

void ScriptedService::stop()
{
    m_thread.run([this](voro::pps::Broker &present) { present.unserve(m_path); });
}

QString ScriptedService::next()
{
    std::unique_lock lock(m_mutex);
    if (!m_wake.wait_for(lock, Patience, [this] { return !m_events.empty(); })) {
        return QStringLiteral("nothing");
    }
    const QString event = m_events.front();
    m_events.pop_front();
    return event;
}

QStringList ScriptedService::next(int count)
{
    QStringList events;
    while (count-- > 0) {
        events += next();
    }
    return events;
}

QStringList ScriptedService::take()
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

void ScriptedService::clientOpened(voro::pps::ClientId, const voro::pps::Peer &)
{
    arrived(QStringLiteral("opened"));
}

void ScriptedService::clientMessage(voro::pps::ClientId client, std::string_view text)
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

void ScriptedService::clientClosed(voro::pps::ClientId)
{
    arrived(QStringLiteral("closed"));
}

void ScriptedService::arrived(const QString &event)
{
    const std::lock_guard lock(m_mutex);
    m_events.push_back(event);
    m_wake.notify_one();
}
