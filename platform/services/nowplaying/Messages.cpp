#include "Messages.h"

#include <voro/PpsObject.h>

#include <pps/Text.h>

namespace voro::nowplaying {

namespace {

/** A name travels to others in every message about the role. */
constexpr qsizetype MaximumName = 1024;
/** With texts of this length no update is too long, however they are written. */
constexpr qsizetype ShortText = 2000;
/** In percent. */
constexpr int VolumeStep = 5;

const QMap<QString, QString> &transportCommands()
{
    static const QMap<QString, QString> commands = {
        {"m_play", "play"}, {"m_pause", "pause"},   {"m_playpause", "playpause"}, {"m_stop", "stop"},
        {"m_next", "next"}, {"m_previous", "prev"}, {"m_fforward", "forward"},    {"m_rewind", "rewind"},
    };
    return commands;
}

Command parseModeCommand(const QVariantMap &data)
{
    static const QMap<QString, QStringList> modes = {{"repeat", {"none", "track", "all"}}, {"shuffle", {"off", "all"}}};
    const QString command = data.value("command").toString();
    if (!modes.contains(command)) {
        return BadCommand{"unknown command"};
    }
    QVariantMap track{{"command", command}};
    if (data.contains("value")) {
        const QString value = data.value("value").toString();
        if (!modes.value(command).contains(value)) {
            return BadCommand{"unknown value"};
        }
        track.insert("value", value);
    }
    return TrackCommand{track};
}

Command parseVolume(VolumeCommand::Kind kind, const QVariant &data)
{
    bool isNumber = false;
    const int level = data.toInt(&isNumber);
    if (!isNumber || data.typeId() == QMetaType::Bool || level < 0 || level > 100) {
        return BadCommand{"the volume is a number from 0 to 100"};
    }
    return VolumeCommand{kind, level};
}

/** A change without a number is by a step. */
Command parseVolumeChange(VolumeCommand::Kind kind, const QVariant &data)
{
    return data.isValid() ? parseVolume(kind, data) : VolumeCommand{kind, VolumeStep};
}

Command parseMute(const QVariant &data)
{
    const QString text = data.toString();
    if (text != "true" && text != "false") {
        return BadCommand{"mute is true or false"};
    }
    return VolumeCommand{VolumeCommand::Mute, text == "true"};
}

} // namespace

QVariantMap parseMessage(std::string_view text)
{
    QByteArray object("@m\n");
    object.append(text.data(), static_cast<qsizetype>(text.size()));
    return PpsObject::decode(object).value("@m").toMap();
}

QByteArray makeMessage(const QString &name, const QVariant &data)
{
    return PpsObject::encode({{"msg", name}, {"dat", data}});
}

QByteArray makeUpdate(const Metadata &metadata)
{
    QByteArray lines = makeMessage("md_update", metadata.toMap());
    if (static_cast<size_t>(lines.size()) <= pps::MaximumMessage) {
        return lines;
    }
    Metadata shortened = metadata;
    for (QString *text : {&shortened.artist, &shortened.album, &shortened.title, &shortened.trackNumber}) {
        text->truncate(ShortText);
    }
    if (shortened.artwork.size() > ShortText) {
        // Half a place is none.
        shortened.artwork.clear();
    }
    return makeMessage("md_update", shortened.toMap());
}

bool parseRegistration(const QVariant &data, Registration &registration, QString &problem)
{
    const QVariantMap map = data.toMap();
    const QVariant name = map.value("name");
    const QString priority = map.value("prio").toString();
    if (name.typeId() != QMetaType::QString || name.toString().isEmpty() || name.toString().size() > MaximumName) {
        problem = "bad name";
    } else if (priority != "high" && priority != "low") {
        problem = "bad priority";
    } else {
        problem.clear();
        registration = {name.toString(), priority == "high"};
    }
    return problem.isEmpty();
}

Command parseCommand(const QVariantMap &message)
{
    const QString name = message.value("msg").toString();
    const QVariant data = message.value("dat");
    if (const auto found = transportCommands().constFind(name); found != transportCommands().cend()) {
        return TrackCommand{*found};
    }
    if (name == "m_command") {
        return parseModeCommand(data.toMap());
    }
    if (name == "v_up") {
        return parseVolumeChange(VolumeCommand::Up, data);
    }
    if (name == "v_down") {
        return parseVolumeChange(VolumeCommand::Down, data);
    }
    if (name == "v_set") {
        return parseVolume(VolumeCommand::Set, data);
    }
    if (name == "v_mute") {
        return parseMute(data);
    }
    return BadCommand{"unknown message"};
}

} // namespace voro::nowplaying
