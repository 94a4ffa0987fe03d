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

/** What the sound server is told that a recording with these input parameters is for. */
std::string recordingRole(const Parameters &input);

} // namespace voro::renderer
