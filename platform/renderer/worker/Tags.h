#pragma once

#include "Gst.h"

#include <string>

namespace voro::renderer {

/** The tags as attribute lines of a metadata object: the known ones by their md_… names, others by their own. */
std::string toAttributes(const GstTagList *tags);

} // namespace voro::renderer
