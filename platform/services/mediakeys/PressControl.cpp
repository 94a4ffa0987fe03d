#include "PressControl.h"

#include <services/common/Request.h>

#include <cmath>

namespace voro::mediakeys {

namespace {

constexpr std::string_view ControlPath = "/pps/services/multimedia/mediakeys/control";
constexpr double LongestPress = 60'000;
constexpr int MaximumPresses = 16;

} // namespace

PressControl::PressControl(pps::Broker &broker, KeyListener &listener) : m_broker(broker), m_listener(listener)
{
    m_broker.serve(ControlPath, this);
}

PressControl::~PressControl()
{
    m_broker.unserve(ControlPath);
}

void PressControl::clientMessage(pps::ClientId client, std::string_view text)
{
    const Request request = parseRequest(text);
    const auto key = keyNamed(request.data.value(QStringLiteral("key")).toString().toStdString());
    const double length = request.data.value(QStringLiteral("ms")).toDouble(-1);
    std::string_view problem;
    if (request.command != "press") {
        problem = "unknown command";
    } else if (!key) {
        problem = "unknown key";
    } else if (length < 0 || length > LongestPress || length != std::floor(length)) {
        problem = "bad length";
    } else if (const auto count = m_counts.find(client); count != m_counts.end() && count->second == MaximumPresses) {
        problem = "too many keys";
    }
    if (problem.empty()) {
        press(client, *key, std::chrono::milliseconds(static_cast<int>(length)));
    } else {
        m_broker.send(client, makeFailure(request.command, problem));
    }
}

void PressControl::press(pps::ClientId client, Key key, std::chrono::milliseconds length)
{
    const Press press{client, {SourceId::Client, client, ++m_lastNumber}, key};
    const Time now = Clock::now();
    m_presses.emplace(now + length, press);
    ++m_counts[client];
    m_listener.keyPressed(press.source, key, now);
    // A tap of no length at all is over before anything else happens.
    advance(now);
}

void PressControl::release(const Press &press, Time at)
{
    m_listener.keyReleased(press.source, press.key, at);
    m_broker.send(press.client, "res::press");
}

void PressControl::clientClosed(pps::ClientId client)
{
    if (m_counts.erase(client) > 0) {
        std::erase_if(m_presses, [client](const auto &entry) { return entry.second.client == client; });
        m_listener.sourceGone({SourceId::Client, client});
    }
}

void PressControl::advance(Time now)
{
    while (!m_presses.empty() && m_presses.begin()->first <= now) {
        const auto [at, press] = *m_presses.begin();
        m_presses.erase(m_presses.begin());
        if (const auto count = m_counts.find(press.client); --count->second == 0) {
            m_counts.erase(count);
        }
        release(press, at);
    }
}

std::optional<Time> PressControl::next() const
{
    return m_presses.empty() ? std::nullopt : std::optional(m_presses.begin()->first);
}

} // namespace voro::mediakeys
