#pragma once

#include <string_view>

namespace voro {

/** The object that media players and applications with media keys open; several services share it (SharedControl). */
inline constexpr std::string_view MediaPlayerControl = "/pps/services/multimedia/mediaplayer/control";
/** Which connection holds the now-playing role. */
inline constexpr std::string_view MediaPlayerStatus = "/pps/services/multimedia/mediaplayer/status";

} // namespace voro
