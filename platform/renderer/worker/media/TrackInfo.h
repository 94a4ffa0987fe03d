#pragma once

#include <renderer/worker/gst/Gst.h>

#include <cstdint>
#include <string>
#include <vector>

namespace voro::renderer {

struct Dimensions {
    int width = 0;
    int height = 0;
    /** The shape of a pixel; 0 when not known. */
    int pixelWidth = 0;
    int pixelHeight = 0;
};

/** The size in caps of video or images; nothing for others. */
Dimensions dimensionsOf(const GstCaps *caps);

/** The captions of a track. */
struct CaptionInfo {
    struct Stream {
        /** A code, and a title for people; each may be empty. */
        std::string language;
        std::string title;
    };
    /** Those in the medium itself. */
    std::vector<Stream> streams{};
    /** Those from elsewhere cannot be read. */
    bool isOtherUnreadable = false;
};

/** The metadata of a track. */
struct TrackInfo {
    Owned<GstTagList> tags{gst_tag_list_new_empty()};
    /** A small copy of a picture that is too large for a report; null while not made. */
    Owned<GstSample> thumbnail{};
    /** In milliseconds, 0 when not known. */
    int64_t duration = 0;
    bool isSeekable = false;
    /** It was read with libavformat, because GStreamer's own elements cannot. */
    bool needsLibav = false;
    /** In Hz, 0 when not known. */
    int sampleRate = 0;
    Dimensions dimensions;
    CaptionInfo captions{};

    /** Adds tags; newer ones replace older ones, and a thumbnail goes with its picture. */
    void merge(const GstTagList *news);
};

/** The attribute lines that describe a track. */
std::string toAttributes(const TrackInfo &info);

} // namespace voro::renderer
