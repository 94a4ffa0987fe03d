#include <voro/audio_manager.h>

#include <atomic>
#include <cerrno>
#include <iterator>

namespace {

constexpr const char *TypeNames[] = {
    "voice", "ringtone", "video_chat", "multimedia", "input_feedback", "voice_recording", "alert", "default",
};

// A handle names its type in its lowest byte, so that a process that only hears of it knows the type.
constexpr unsigned TypeBits = 8;
constexpr unsigned TypeMask = (1U << TypeBits) - 1;
constexpr unsigned Mark = 0x40;

} // namespace

const char *audio_manager_get_name_from_type(int type)
{
    if (type < 0 || type >= static_cast<int>(std::size(TypeNames))) {
        return nullptr;
    }
    return TypeNames[type];
}

int audio_manager_get_handle(int type, unsigned int *handle)
{
    static std::atomic<unsigned> last = 0;
    if (!audio_manager_get_name_from_type(type) || !handle) {
        return EINVAL;
    }
    *handle = (++last << TypeBits) | Mark | static_cast<unsigned>(type);
    return 0;
}

int audio_manager_get_type_from_handle(unsigned int handle)
{
    const int type = static_cast<int>((handle & TypeMask) ^ Mark);
    return handle > TypeMask && audio_manager_get_name_from_type(type) ? type : -1;
}
