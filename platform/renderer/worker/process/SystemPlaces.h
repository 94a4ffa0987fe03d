#pragma once

#include <string>
#include <vector>

namespace voro::renderer {

/**
 * The files and folders that libraries and plugins read. Of the user's own only those for fonts and plugins, and the
 * keys to the servers of sound and screen; media come as descriptors.
 */
std::vector<std::string> systemPlaces();

/** What finding hosts by their names takes, like the sockets of helpers, which reach the network for others. */
std::vector<std::string> networkPlaces();

/** The folder of the sockets of X servers. */
inline constexpr char ScreenServerPlace[] = "/tmp/.X11-unix";
/** The folder and the key for drawing at an X server. */
std::vector<std::string> screenPlaces();

} // namespace voro::renderer
