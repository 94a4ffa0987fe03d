#pragma once

#include "Gst.h"

#include <renderer/common/Names.h>

namespace voro::renderer {

/** Sets the gains of an equalizer with ten bands to a preset; "off" makes it pass everything as it is. */
void setPreset(GstElement *equalizer, Preset preset);

} // namespace voro::renderer
