#pragma once

#include <renderer/common/Error.h>
#include <renderer/common/Parameters.h>

#include <string>
#include <string_view>

namespace voro::renderer {

/**
 * Reads the URL of an input of the type "track": "audio:default", of one or two channels with "?nchan="; 0 stands for
 * as many as the device has.
 */
Result parseAudioInput(std::string_view url, int &channels);

/** The sound server's role for a recording with these input parameters. */
std::string recordingRole(const Parameters &input);

} // namespace voro::renderer
