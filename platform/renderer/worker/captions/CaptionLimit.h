#pragma once

#include <gst/gst.h>

#include <string>
#include <string_view>

namespace voro::renderer {

/** The largest caption, in bytes. */
inline constexpr size_t LargestCaption = 16 * 1024;

/** The beginning of a caption that is no larger than a size, in whole characters. */
std::string_view limitedCaption(std::string_view text, size_t largest = LargestCaption);

/** Cuts the captions off that are too large, in a file of captions that comes piece by piece. */
class CaptionLimit {
public:
    std::string limited(std::string_view piece);
    /** The amount that was cut off so far, in bytes. */
    size_t removed() const { return m_removed; }

private:
    void take(char byte);

    /** Bytes since the caption began. */
    size_t m_size = 0;
    size_t m_marks = 0;
    size_t m_removed = 0;
    bool m_isTooLarge = false;
    bool m_isLineEmpty = true;
    /** How much of the arrow between two times the last bytes are. */
    size_t m_arrow = 0;
    /** Whether a caption ends with an empty line, as where there are arrows; otherwise every line is one. */
    bool m_hasBlocks = false;
};

/** Limits what a parser of files of captions gets. */
void limitCaptions(GstElement *parser);

} // namespace voro::renderer
