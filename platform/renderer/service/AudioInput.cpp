#include "AudioInput.h"

#include "StreamRole.h"

namespace voro::renderer {

Result parseAudioInput(std::string_view url, int &channels)
{
    constexpr std::string_view Device = "audio:default";
    constexpr std::string_view Channels = "nchan=";
    channels = 0;
    const size_t end = url.find('?');
    if (url.substr(0, end) != Device) {
        return {ErrorCode::SourceUnavailable, "there is no input " + std::string(url)};
    }
    while (url.find_first_of("?&") != std::string_view::npos) {
        url.remove_prefix(url.find_first_of("?&") + 1);
        const std::string_view item = url.substr(0, url.find('&'));
        if (item != "nchan=1" && item != "nchan=2") {
            const bool isKnown = item.starts_with(Channels);
            return {isKnown ? ErrorCode::UnsupportedValue : ErrorCode::InvalidParameter,
                    "a recording cannot have " + std::string(item)};
        }
        channels = item.back() - '0';
    }
    return {};
}

std::string recordingRole(const Parameters &input)
{
    const std::string role = streamRoleOf(static_cast<uint32_t>(input.number("audioman_handle", 0)));
    return role.empty() ? streamRoleOf(input.text("audio_type")) : role;
}

} // namespace voro::renderer
