#pragma once

#include <QtCore/QString>

namespace voro::multimedia {

// The names of the media controller service.

inline constexpr QLatin1String PPS_CONTROLLER_PATHNAME("/pps/services/multimedia/mediacontroller/control");
// Every read waits for the next message.
inline constexpr QLatin1String PPS_CONTROLLER_PATHNAME_WAIT("/pps/services/multimedia/mediacontroller/control?wait");

inline constexpr char COMMAND_PLAY[] = "m_play";
inline constexpr char COMMAND_PAUSE[] = "m_pause";
inline constexpr char COMMAND_PLAYPAUSE[] = "m_playpause";
inline constexpr char COMMAND_STOP[] = "m_stop";
inline constexpr char COMMAND_NEXT[] = "m_next";
inline constexpr char COMMAND_PREVIOUS[] = "m_previous";
inline constexpr char COMMAND_FFORWARD[] = "m_fforward";
inline constexpr char COMMAND_REWIND[] = "m_rewind";
inline constexpr char COMMAND_VOLUMEUP[] = "v_up";
inline constexpr char COMMAND_VOLUMEDOWN[] = "v_down";
inline constexpr char COMMAND_SETVOLUME[] = "v_set";
inline constexpr char COMMAND_SETMUTE[] = "v_mute";
inline constexpr char COMMAND_GENERIC[] = "m_command";
inline constexpr char SUB_COMMAND_REPEAT[] = "repeat";
inline constexpr char SUB_COMMAND_SHUFFLE[] = "shuffle";

inline constexpr QLatin1String MSG_SUBSCRIBE("md_subscribe");
inline constexpr QLatin1String MSG_UNSUBSCRIBE("md_unsubscribe");
inline constexpr QLatin1String MSG_STATE("m_state");
inline constexpr QLatin1String MSG_UPDATE("md_update");
inline constexpr QLatin1String MSG_ACTIVE_PID("m_active_pid");
inline constexpr QLatin1String PROPERTY_STATE("state");
inline constexpr QLatin1String STATE_PLAYING("playing");
inline constexpr QLatin1String STATE_PAUSED("paused");
inline constexpr QLatin1String STATE_STOPPED("stopped");
inline constexpr QLatin1String STATE_TRACKCHANGE("trackchange");
inline constexpr QLatin1String PROPERTY_ARTIST("artist");
inline constexpr QLatin1String PROPERTY_ALBUM("album");
inline constexpr QLatin1String PROPERTY_TRACK("track");
inline constexpr QLatin1String PROPERTY_TRACK_NUMBER("track_number");
inline constexpr QLatin1String PROPERTY_NEXTENABLED("nextEnabled");
inline constexpr QLatin1String PROPERTY_PREVENABLED("prevEnabled");
inline constexpr QLatin1String PROPERTY_REPEATMODE("repeat_mode");
inline constexpr QLatin1String PROPERTY_SHUFFLEMODE("shuffle_mode");
inline constexpr QLatin1String PROPERTY_POSITION("position");
inline constexpr QLatin1String PROPERTY_DURATION("duration");
inline constexpr QLatin1String PROPERTY_ARTWORK("albumArtwork");
inline constexpr QLatin1String PROPERTY_ALLMETADATA("allmetadata");
inline constexpr QLatin1String RESULT_ERROR("error");

/** A message without data. */
inline QString messageText(const char *command)
{
    return QStringLiteral("msg::") + QLatin1String(command);
}

} // namespace voro::multimedia
