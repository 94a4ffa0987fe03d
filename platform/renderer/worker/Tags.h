#pragma once

#include "Gst.h"

#include <string>

namespace voro::renderer {

/** The tags as attribute lines of a metadata object: the known ones by their md_… names, others by their own. What
    would make a message too long is left out. */
std::string toAttributes(const GstTagList *tags);

} // namespace voro::renderer
