#include <voro/audio_manager.h>

#include <iterator>

namespace {

constexpr const char *TypeNames[] = {
    "voice", "ringtone", "video_chat", "multimedia", "input_feedback", "voice_recording", "alert", "default",
};

} // namespace

const char *audio_manager_get_name_from_type(int type)
{
    if (type < 0 || type >= static_cast<int>(std::size(TypeNames)))
        return nullptr;
    return TypeNames[type];
}
