#pragma once

#include "FakeEngines.h"

#include <QtTest/QtTest>

#include <BrokerThread.h>
#include <poll.h>
#include <renderer/service/Context.h>
#include <Texts.h>

#include <optional>

/* One context with engines that the test plays: what the tests of contexts share. */

namespace context {

using voro::pps::Broker;
using voro::pps::BrokerThread;
using voro::pps::Connection;
using voro::pps::readNow;
using voro::renderer::Context;
using voro::renderer::ErrorCode;

inline constexpr const char *Folder = "/pps/services/multimedia/renderer/context/c";
inline constexpr const char *Attach = "input_attach url::/a.ogg type::autolist";

inline std::string path(const std::string &object)
{
    return std::string(Folder) + '/' + object;
}

/** One context in the broker's thread, with engines that the test plays, and the test as its application. */
class Stage {
public:
    explicit Stage(const voro::renderer::Parking::Delays &delays = {})
    {
        run([&](Broker &broker) {
            m_parking.emplace(broker, delays);
            m_context.emplace(broker, engines, *m_parking, Folder);
        });
        m_control = m_thread.open(path("control"), voro::pps::PublishSubscribe);
    }
    ~Stage()
    {
        run([this](Broker &) {
            m_context.reset();
            m_parking.reset();
        });
    }

    void run(const std::function<void(Broker &)> &function) { m_thread.run(function); }

    /** Writes a command: "NAME ATTRIBUTE…". */
    void write(const std::string &command)
    {
        std::string text = "msg::" + command + '\n';
        std::replace(text.begin(), text.end(), ' ', '\n');
        if (!m_control->write(text + "id:n:" + std::to_string(++m_lastId))) {
            qFatal("cannot write");
        }
    }
    /** Waits for the next answer. */
    voro::pps::Message answer()
    {
        voro::pps::Message message;
        std::string text;
        if (!m_control->read(text, true) || !message.parse(text)) {
            qFatal("no answer");
        }
        return message;
    }
    /** Does one step and returns how it went: a command and its error code; "!EVENT" of the engine; "!die". */
    int step(const std::string &text)
    {
        if (text == "!die") {
            run([this](Broker &) { engines.die(); });
        } else if (text.starts_with('!')) {
            run([&](Broker &) { engines.tell(text.substr(1)); });
        } else {
            write(text);
            return static_cast<int>(answer().number("err", -1));
        }
        return 0;
    }
    void park()
    {
        run([this](Broker &) { m_context->park(); });
    }
    std::string content(const std::string &object)
    {
        std::string text;
        run([&](Broker &broker) { text = broker.content(path(object)); });
        return text;
    }
    std::vector<std::string> takeLog()
    {
        std::vector<std::string> log;
        run([&](Broker &) { log = engines.takeLog(); });
        return log;
    }
    std::unique_ptr<Connection> watch(const std::string &object)
    {
        return m_thread.open(path(object), voro::pps::Subscribe);
    }

    FakeEngines engines;

private:
    BrokerThread m_thread;
    std::optional<voro::renderer::Parking> m_parking;
    std::optional<Context> m_context;
    std::unique_ptr<Connection> m_control;
    int m_lastId = 0;
};

/** "a:n:1 b::x" for the attributes of an object's text. */
inline QByteArray attributes(const std::string &text)
{
    QByteArrayList lines = QByteArray::fromStdString(text).split('\n');
    lines.removeIf([](const QByteArray &line) { return line.isEmpty() || line.contains('@'); });
    return lines.join(' ');
}

/** The command that makes a file the output. */
inline QString outputCommand(const QString &file)
{
    return QLatin1String("output_attach type::file url::") + file;
}

/** Fetches commands, their codes and the state that they lead to, and tries them. */
inline void trySteps()
{
    QFETCH(QStringList, commands);
    QFETCH(QList<int>, codes);
    QFETCH(QByteArray, state);
    Stage stage;
    QList<int> results;
    for (const QString &command : commands) {
        results << stage.step(command.toStdString());
    }
    QCOMPARE(results, codes);
    QCOMPARE(attributes(stage.content("state")), state);
    // Nothing is left over that would wake the daemon without end.
    stage.run([](Broker &broker) {
        pollfd events{broker.fd(), POLLIN, 0};
        QCOMPARE(poll(&events, 1, 0), 0);
    });
}

} // namespace context
