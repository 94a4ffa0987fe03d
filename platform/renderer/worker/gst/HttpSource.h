#pragma once

#include "Gst.h"

#include <optional>

namespace voro::renderer {

/** Whether a server offers to send parts of a medium, if the event is the head of its answer. */
std::optional<bool> offersParts(GstEvent *event);

/**
 * Lets nobody seek in what an HTTP server does not offer in parts. The source itself takes every server of which it
 * knows the length for one that does, and fails when it does not.
 */
void keepToServersOffer(GstElement *source);

} // namespace voro::renderer
