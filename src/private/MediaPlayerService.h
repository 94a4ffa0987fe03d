#pragma once

#include <QtCore/QString>

namespace voro::multimedia {

/** The objects of the service that media players and applications with media keys share. */
inline constexpr QLatin1String MediaPlayerControl("/pps/services/multimedia/mediaplayer/control");
inline constexpr QLatin1String MediaPlayerStatus("/pps/services/multimedia/mediaplayer/status");

} // namespace voro::multimedia
