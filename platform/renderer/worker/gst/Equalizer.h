#pragma once

#include "Gst.h"

#include <string_view>

namespace voro::renderer {

/**
 * Sets the gains of an equalizer with ten bands to a preset; an unknown name and "off" make it pass everything as it
 * is.
 */
void setPreset(GstElement *equalizer, std::string_view preset);

} // namespace voro::renderer
