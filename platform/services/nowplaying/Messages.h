#pragma once

#include "Metadata.h"

#include <string_view>
#include <variant>

/* The messages of the services: texts in, checked values out, and back. */

namespace voro::nowplaying {

/** Takes a message apart; empty when the text is bad. */
QVariantMap parseMessage(std::string_view text);

/** The lines of a message with "msg" and "dat". */
QByteArray makeMessage(const QString &name, const QVariant &data);
/** The lines of an "md_update". Texts are shortened when the message would be too long otherwise. */
QByteArray makeUpdate(const Metadata &metadata);

inline std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}

/** A connection's own description. */
struct Registration {
    QString name;
    bool isHigh = false;
};
/** Takes the "dat" of a "register" message; false with a problem for people when it is bad. */
bool parseRegistration(const QVariant &data, Registration &registration, QString &problem);

/** A command for the source: the "dat" of a "track" message, or "playpause". */
struct TrackCommand {
    QVariant data;
};
/** A command for the default sink. */
struct VolumeCommand {
    enum Kind { Up, Down, Set, Mute };
    Kind kind;
    /** In percent. Up, Down: by how much; Set: 0 to 100. Mute: 0 or 1. */
    int value = 0;
};
/** A command that cannot be carried out, and why. */
struct BadCommand {
    QString problem;
};
using Command = std::variant<BadCommand, TrackCommand, VolumeCommand>;
/** Takes a controller's message. */
Command parseCommand(const QVariantMap &message);

} // namespace voro::nowplaying
