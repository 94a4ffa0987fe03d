#include "TrackInfo.h"

#include "Tags.h"

#include <pps/Text.h>
#include <renderer/worker/captions/CaptionLimit.h>

#include <algorithm>

namespace voro::renderer {

namespace {

bool isSame(GstSample *one, GstSample *other)
{
    GstBuffer *buffer = gst_sample_get_buffer(one);
    GstMapInfo map;
    if (!gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        return false;
    }
    GstBuffer *otherBuffer = gst_sample_get_buffer(other);
    const bool isEqual =
        gst_buffer_get_size(otherBuffer) == map.size && gst_buffer_memcmp(otherBuffer, 0, map.data, map.size) == 0;
    gst_buffer_unmap(buffer, &map);
    return isEqual;
}

/** Nothing where there are none. */
std::string toAttributes(const CaptionInfo &captions)
{
    /** More than any film has; what a broken one claims has to leave room for the rest. */
    constexpr size_t MostStreams = 32;
    constexpr size_t LongestText = 64;
    std::string list;
    for (size_t i = 0; i < std::min(captions.streams.size(), MostStreams); ++i) {
        const CaptionInfo::Stream &stream = captions.streams[i];
        list += list.empty() ? R"({"language":)" : R"(,{"language":)";
        pps::appendJsonString(list, limitedCaption(stream.language, LongestText));
        list += R"(,"title":)";
        pps::appendJsonString(list, limitedCaption(stream.title, LongestText));
        list += '}';
    }
    std::string lines = list.empty() ? std::string() : "captions:json:[" + list + "]\n";
    if (captions.isOtherUnreadable) {
        pps::appendBool(lines, "captions_unreadable", true);
    }
    return lines;
}

} // namespace

Dimensions dimensionsOf(const GstCaps *caps)
{
    Dimensions size;
    if (!caps || gst_caps_get_size(caps) == 0) {
        return size;
    }
    const GstStructure *structure = gst_caps_get_structure(caps, 0);
    const std::string_view name = gst_structure_get_name(structure);
    if ((name.starts_with("video/") || name.starts_with("image/"))
        && gst_structure_get_int(structure, "width", &size.width)
        && gst_structure_get_int(structure, "height", &size.height)
        && !gst_structure_get_fraction(structure, "pixel-aspect-ratio", &size.pixelWidth, &size.pixelHeight)) {
        size.pixelWidth = size.pixelHeight = 1;
    }
    return size;
}

void TrackInfo::merge(const GstTagList *news)
{
    const Owned<GstTagList> additions(gst_tag_list_copy(news));
    // A bit rate is measured again with every frame; the first one is as good as the next.
    if (gst_tag_list_get_tag_size(tags.get(), GST_TAG_BITRATE) > 0) {
        gst_tag_list_remove_tag(additions.get(), GST_TAG_BITRATE);
    }
    const auto known = pictureIn(tags.get());
    const auto picture = pictureIn(news);
    if (known && picture && !isSame(known.get(), picture.get())) {
        thumbnail.reset();
    }
    tags.reset(gst_tag_list_merge(tags.get(), additions.get(), GST_TAG_MERGE_REPLACE));
}

std::string toAttributes(const TrackInfo &info)
{
    const Dimensions &size = info.dimensions;
    std::string lines;
    pps::appendNumber(lines, "md_title_duration", info.duration);
    pps::appendBool(lines, "md_title_seekable", info.isSeekable);
    pps::appendNumber(lines, "md_title_samplerate", info.sampleRate);
    pps::appendNumber(lines, "md_video_width", size.width);
    pps::appendNumber(lines, "md_video_height", size.height);
    if (size.pixelWidth > 0 && size.pixelHeight > 0) {
        pps::appendNumber(lines, "md_video_pixel_width", size.pixelWidth);
        pps::appendNumber(lines, "md_video_pixel_height", size.pixelHeight);
    }
    lines += toAttributes(info.captions);
    return lines + toAttributes(info.tags.get(), info.thumbnail.get());
}

} // namespace voro::renderer
