#include "StreamRole.h"

#include <voro/audio_manager.h>

#include <cstring>

namespace voro::renderer {

namespace {

/** The sound servers' own word for a type. */
std::string streamRoleOfType(int type)
{
    switch (type) {
    case AUDIO_TYPE_VOICE:
    case AUDIO_TYPE_VIDEO_CHAT:
        return "phone";
    case AUDIO_TYPE_MULTIMEDIA:
        return "music";
    case AUDIO_TYPE_VOICE_RECORDING:
        return "production";
    case AUDIO_TYPE_RINGTONE:
    case AUDIO_TYPE_INPUT_FEEDBACK:
    case AUDIO_TYPE_ALERT:
        return "event";
    default:
        return {};
    }
}

} // namespace

std::string streamRoleOf(uint32_t handle)
{
    return streamRoleOfType(audio_manager_get_type_from_handle(handle));
}

std::string streamRoleOf(const std::string &name)
{
    for (int type = 0; const char *known = audio_manager_get_name_from_type(type); ++type) {
        if (name == known) {
            return streamRoleOfType(type);
        }
    }
    return {};
}

} // namespace voro::renderer
