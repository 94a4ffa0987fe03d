#pragma once

#include "Gst.h"

namespace voro::renderer {

/** Makes an element with the pads "sink" and "src" for the place behind a source pad; null if none is needed there. */
using MakeElement = GstElement *(*)(GstPad *source);

/** Puts an element behind a source pad as soon as that is linked to something; it goes with the link. */
void insertWhenLinked(GstElement *element, MakeElement make);

} // namespace voro::renderer
