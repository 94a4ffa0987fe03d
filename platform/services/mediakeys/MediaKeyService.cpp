#include "MediaKeyService.h"

#include "DesktopSession.h"

#include <pps/Log.h>
#include <services/common/Request.h>

#include <algorithm>
#include <cstdlib>

namespace voro::mediakeys {

namespace {

/** One that is longer holds something else, which no client is given to keep. */
constexpr size_t LongestRegistration = 512;

} // namespace

Mode modeFromEnvironment()
{
    const char *value = std::getenv("VORO_MEDIA_KEYS");
    const std::string_view name = value ? value : "auto";
    if (name == "all") {
        return Mode::All;
    }
    if (name == "registered") {
        return Mode::Registered;
    }
    if (name != "auto") {
        log::warn(log::Category::Keys, "VORO_MEDIA_KEYS: '%s' is not auto, all or registered; using auto", value);
    }
    return Mode::Auto;
}

MediaKeyService::MediaKeyService(pps::Broker &broker, Mode mode, const std::string &deviceFolder)
    : m_broker(broker),
      m_mode(mode),
      m_presses([this](Presses::Event event, Key key, const Owners &owners) { report(event, key, owners); }),
      m_control(broker, *this)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { advance(); });
    // Opening every device takes a while, and nobody's start has to wait for it.
    QTimer::singleShot(0, &m_timer,
                       [this, deviceFolder] { m_devices.emplace(static_cast<KeyListener &>(*this), deviceFolder); });
}

void MediaKeyService::clientOpened(pps::ClientId client, const pps::Peer &peer)
{
    m_clients[client].process = peer.process;
}

void MediaKeyService::clientMessage(pps::ClientId client, std::string_view text)
{
    const Request request = parseRequest(text);
    if (request.command != "button") {
        return;
    }
    const auto registration = parseRegistration(request.data.value(QStringLiteral("key")).toString().toStdString());
    if (registration && request.data.value(QStringLiteral("action")) == QStringLiteral("forward")) {
        Client &known = m_clients[client];
        if (known.registrations.insert(*registration).second && text.size() <= LongestRegistration) {
            known.messages.append(ControlLine).append(text).append(text.ends_with('\n') ? "" : "\n");
            m_broker.setReturn(client, known.messages);
        }
    } else {
        m_broker.send(client, "res::button\nerr::bad registration");
    }
}

void MediaKeyService::clientClosed(pps::ClientId client)
{
    m_clients.erase(client);
}

void MediaKeyService::keyPressed(SourceId source, Key key, Time at)
{
    Owners owners;
    for (const auto &[id, client] : m_clients) {
        if (client.hasRegistered(key)) {
            owners.insert(client.process);
        }
    }
    if (!owners.empty()) {
        m_presses.press(source, key, at, std::move(owners));
    } else if (m_command && isActedUpon(source)) {
        m_command(commandOf(key));
    }
    armTimer();
}

void MediaKeyService::keyReleased(SourceId source, Key key, Time at)
{
    m_presses.release(source, key, at);
    armTimer();
}

void MediaKeyService::sourceGone(SourceId source)
{
    m_presses.forget(source);
    armTimer();
}

bool MediaKeyService::isActedUpon(SourceId source) const
{
    return source.kind == SourceId::Client || m_mode == Mode::All || (m_mode == Mode::Auto && !isDesktopSession());
}

// Registering otherwise takes a new connection, so what counts is the process that had registered.
void MediaKeyService::report(Presses::Event event, Key key, const Owners &owners)
{
    const bool isThreshold = event == Presses::Event::ThresholdReached;
    const std::string line =
        std::string("msg::key\ndat::bn_").append(nameOf(key)).append(isThreshold ? "_med" : "_short");
    for (const auto &[id, client] : m_clients) {
        if (owners.contains(client.process) && client.wants(event, key)) {
            m_broker.send(id, line);
        }
    }
}

bool MediaKeyService::Client::hasRegistered(Key key) const
{
    return std::any_of(registrations.begin(), registrations.end(),
                       [key](const Registration &registration) { return registration.key == key; });
}

bool MediaKeyService::Client::wants(Presses::Event event, Key key) const
{
    switch (event) {
    case Presses::Event::ThresholdReached:
        return registrations.contains({key, Kind::Threshold});
    case Presses::Event::ReleasedBefore:
        return registrations.contains({key, Kind::AnyRelease}) || registrations.contains({key, Kind::ShortRelease});
    case Presses::Event::ReleasedAfter:
        return registrations.contains({key, Kind::AnyRelease});
    }
    return false;
}

void MediaKeyService::advance()
{
    // What happens from here on is later than this.
    const Time now = Clock::now();
    if (m_devices) {
        m_devices->read();
    }
    m_control.advance(now);
    m_presses.advance(now);
    armTimer();
}

void MediaKeyService::armTimer()
{
    const auto next = std::min(m_presses.next().value_or(Time::max()), m_control.next().value_or(Time::max()));
    if (next == Time::max()) {
        m_timer.stop();
        return;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - Clock::now());
    m_timer.start(std::max(left, std::chrono::milliseconds(0)));
}

} // namespace voro::mediakeys
