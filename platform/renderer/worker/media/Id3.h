#pragma once

#include <renderer/worker/gst/Gst.h>

#include <string>

namespace voro::renderer {

/** The tags that stand before and behind the frames of a file of MPEG audio, null without any; those before win. */
Owned<GstTagList> id3Tags(const std::string &path);

} // namespace voro::renderer
