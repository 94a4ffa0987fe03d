#pragma once

#include <renderer/worker/gst/Gst.h>

#include <cstddef>
#include <string>

namespace voro::renderer {

/** The largest picture in bytes that a metadata object has room for. */
extern const size_t MaximumPicture;

/**
 * The tags as attribute lines of a metadata object: the known ones by their md_… names, others by their own. What
 * would make a message too long is left out; a thumbnail stands in for a picture that is too large.
 */
std::string toAttributes(const GstTagList *tags, GstSample *thumbnail);

/** The picture, null when there is none. */
Owned<GstSample> pictureIn(const GstTagList *tags);
bool isTooLarge(GstSample *picture);

} // namespace voro::renderer
