#include "SoundService.h"

#include <QtCore/QCoreApplication>

#include <pps/Log.h>
#include <pps/Text.h>
#include <services/common/Request.h>

namespace voro::sound {

namespace {

constexpr std::string_view ControlPath = "/pps/services/multimedia/sound/control";
constexpr std::string_view StatusPath = "/pps/services/multimedia/sound/status";

std::string soundsFolder()
{
    return (QCoreApplication::applicationDirPath() + QLatin1String("/" VORO_SOUNDS)).toStdString();
}

} // namespace

SoundService::SoundService(pps::Broker &broker) : m_broker(broker), m_player(soundsFolder())
{
    m_broker.serve(ControlPath, this);
}

SoundService::~SoundService()
{
    m_broker.unserve(ControlPath);
}

void SoundService::clientMessage(pps::ClientId client, std::string_view text)
{
    const Request request = parseRequest(text);
    const bool isPlay = request.command == "play_sound";
    if (!isPlay && request.command != "prepare_sound") {
        fail(client, request.command, "unknown command");
        return;
    }
    const Sound *sound = soundNamed(request.data.value(QStringLiteral("sound")).toString().toStdString());
    if (!sound) {
        fail(client, request.command, "unknown sound");
        return;
    }
    const auto done = [this, client, command = request.command](std::string_view problem) {
        QMetaObject::invokeMethod(
            &m_context,
            [this, client, command, problem] {
                report(problem);
                if (!problem.empty()) {
                    fail(client, command, problem);
                }
            },
            Qt::QueuedConnection);
    };
    const auto action = isPlay ? Player::Action::Play : Player::Action::Prepare;
    if (!m_player.perform(action, *sound, m_processes.at(client), done)) {
        fail(client, request.command, "too many sounds wait");
    }
}

/** Publishes how the last sound went: a client that asks to play gets no answer when it does. */
void SoundService::report(std::string_view problem)
{
    const bool isSilent = problem == SoundServer::NoServer;
    if (isSilent && !m_isSilent) {
        log::warn(log::Category::Sound, "no sound server answers; playing without sound");
    }
    m_isSilent = isSilent;
    std::string status = "*@status\n";
    pps::appendBool(status, "silent", isSilent);
    m_broker.publish(StatusPath, status);
}

void SoundService::fail(pps::ClientId client, const std::string &command, std::string_view problem)
{
    m_broker.send(client, makeFailure(command, problem));
}

} // namespace voro::sound
