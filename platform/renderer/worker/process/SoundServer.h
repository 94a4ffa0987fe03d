#pragma once

#include <string>
#include <vector>

namespace voro::renderer {

/**
 * Names the sound server in the environment: the one that is configured, or the usual places. The server's library
 * would look for them itself, but it makes folders on the way, which a worker may not do.
 */
void nameSoundServer();

/** The servers that are tried, one after the other: paths of sockets, or places on the network. */
std::vector<std::string> soundServers();

/** The file and the folder of the user's configuration of the server's library; none when there is none. */
std::vector<std::string> soundConfigurationPlaces();

/** Whether the sound server may be on the network. */
bool isSoundServerFar();

/** The folders in which sockets of the sound server may be. */
std::vector<std::string> soundServerPlaces();

} // namespace voro::renderer
