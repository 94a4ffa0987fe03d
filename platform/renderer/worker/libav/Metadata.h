#pragma once

#include <renderer/common/LocalFile.h>
#include <renderer/worker/gst/Gst.h>

extern "C" {
#include <libavformat/avformat.h>
}

namespace voro::renderer {

/** The metadata in a file: its texts and its cover. */
Owned<GstTagList> tagsOf(const AVFormatContext &context, const LocalFile &file);

} // namespace voro::renderer
