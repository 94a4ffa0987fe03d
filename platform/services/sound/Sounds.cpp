#include "Sounds.h"

#include <algorithm>

namespace voro::sound {

namespace {

// A burst must not sound like a single picture, so its sound is always our own.
constexpr std::array<Sound, 16> Sounds{{
    {"alarm_battery", {"battery-low", "battery-caution"}},
    {"event_browser_start", {"link-pressed"}},
    {"event_camera_shutter", {"camera-shutter"}, true},
    {"event_device_lock", {"desktop-screen-lock"}},
    {"event_device_unlock", {"desktop-screen-unlock"}},
    {"event_device_tether", {"network-connectivity-established", "device-added"}},
    {"event_device_untether", {"network-connectivity-lost", "device-removed"}},
    {"notification_general", {"message-new-instant", "message"}},
    {"input_keypress", {"button-pressed"}},
    {"event_recording_start", {}},
    {"event_recording_stop", {}},
    {"notification_sapphire", {}},
    {"system_master_volume_reference", {"audio-volume-change"}},
    {"event_video_call", {"phone-incoming-call"}},
    {"event_video_call_outgoing", {"phone-outgoing-calling"}},
    {"event_camera_burst_sound", {}, true},
}};

} // namespace

const Sound *soundNamed(std::string_view name)
{
    const auto found =
        std::find_if(Sounds.begin(), Sounds.end(), [&](const Sound &sound) { return sound.name == name; });
    return found == Sounds.end() ? nullptr : &*found;
}

} // namespace voro::sound
