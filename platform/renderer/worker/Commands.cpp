#include "Commands.h"

#include <renderer/common/Protocol.h>

namespace voro::renderer {

bool Commands::start()
{
    return m_link.open([this](const pps::Message &message) { handle(message); });
}

void Commands::handle(const pps::Message &message)
{
    const std::string command = message.text("msg");
    if (command == "open") {
        open(message);
    } else {
        reply(command, message.number("id"), handleNow(command, message));
    }
}

Result Commands::handleNow(const std::string &command, const pps::Message &message)
{
    if (command == "ping") {
        return {};
    }
    if (command == "play") {
        return m_player.play();
    }
    if (command == "speed") {
        return m_player.setSpeed(static_cast<int>(message.number("speed")));
    }
    if (command == "seek") {
        return m_player.seek(message.number("position"));
    }
    if (command == "stop") {
        m_player.stop();
        return {};
    }
    if (command == "set") {
        takeSettings(message);
        return {};
    }
    if (command == "close") {
        m_player.close();
        return {};
    }
    return {ErrorCode::Internal, "unknown request " + command};
}

void Commands::open(const pps::Message &message)
{
    m_player.settings() = {};
    takeSettings(message);
    std::optional<int64_t> position;
    if (message.has("position")) {
        position = message.number("position");
    }
    const int64_t id = message.number("id");
    const bool isPlaylist = message.text("type") == "playlist";
    m_player.open(message.text("url"), isPlaylist, position,
                  [this, id](const Result &result) { reply("open", id, result); });
}

void Commands::takeSettings(const pps::Message &message)
{
    Player::Settings &settings = m_player.settings();
    settings.speed = static_cast<int>(message.number("speed", settings.speed));
    settings.interval = static_cast<guint>(message.number("interval", settings.interval));
    settings.volume = message.number("volume", settings.volume);
    if (message.has("audio")) {
        settings.isAudible = message.text("audio") == "true";
    }
    if (message.has("eq_preset")) {
        settings.preset = message.text("eq_preset");
    }
    if (message.has("repeat")) {
        settings.repeat = message.text("repeat");
    }
    m_player.apply();
}

void Commands::reply(const std::string &command, int64_t id, const Result &result)
{
    m_link.send(answer(command, id, result));
}

} // namespace voro::renderer
