#pragma once

#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/media/TrackInfo.h>

#include <string>
#include <vector>

/* The streams of captions in a playbin: those of its medium and those that come from elsewhere. */

namespace voro::renderer {

/** What decodes the URI that an element or a pad is a part of; null outside of any. */
GstElement *decoderAround(GstObject *part);

/** The playbin's numbers of the streams of captions that its medium has. */
std::vector<int> ownCaptions(GstElement *playbin, const std::string &medium);
/** The playbin's numbers of the streams of captions that come from elsewhere. */
std::vector<int> otherCaptions(GstElement *playbin, const std::string &medium);

/** What a stream of captions says of itself. */
CaptionInfo::Stream describeCaptions(GstElement *playbin, int number);

} // namespace voro::renderer
