#pragma once

#include <renderer/worker/gst/Gst.h>

extern "C" {
#include <libavformat/avformat.h>
}

#include <string>

namespace voro::renderer {

/** What a file tells of itself: its texts and its cover. */
Owned<GstTagList> tagsOf(const AVFormatContext &context, const std::string &path);

} // namespace voro::renderer
