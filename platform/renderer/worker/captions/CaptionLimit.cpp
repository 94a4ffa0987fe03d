#include "CaptionLimit.h"

#include <renderer/worker/gst/Gst.h>

#include <algorithm>

namespace voro::renderer {

namespace {

constexpr std::string_view Arrow = "-->";
/** Parsers close what was left open, which takes the square of its number. */
constexpr size_t MostMarks = 256;

/** Whether a byte goes on with a character of UTF-8. */
bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

// Runs in a streaming thread.
GstPadProbeReturn onPiece(GstPad *, GstPadProbeInfo *info, gpointer data)
{
    auto *limit = static_cast<CaptionLimit *>(data);
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_EVENT_BOTH) {
        if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_FLUSH_STOP) {
            *limit = {};
        }
        return GST_PAD_PROBE_OK;
    }
    GstBuffer *piece = GST_PAD_PROBE_INFO_BUFFER(info);
    GstMapInfo map;
    if (!gst_buffer_map(piece, &map, GST_MAP_READ)) {
        return GST_PAD_PROBE_DROP;
    }
    // Parsers take a piece that does not begin where the last one ended for another part of the file.
    const auto place = GST_BUFFER_OFFSET(piece) - limit->removed();
    const std::string text = limit->limited({reinterpret_cast<const char *>(map.data), map.size});
    gst_buffer_unmap(piece, &map);
    if (text.empty()) {
        return GST_PAD_PROBE_DROP;
    }
    if (limit->removed() > 0) {
        GstBuffer *shorter = gst_buffer_new_memdup(text.data(), text.size());
        GST_BUFFER_OFFSET(shorter) = place;
        gst_buffer_unref(piece);
        GST_PAD_PROBE_INFO_DATA(info) = shorter;
    }
    return GST_PAD_PROBE_OK;
}

} // namespace

std::string_view limitedCaption(std::string_view text, size_t largest)
{
    size_t size = std::min(text.size(), largest);
    while (size > 0 && size < text.size() && isContinuation(text[size])) {
        --size;
    }
    return text.substr(0, size);
}

std::string CaptionLimit::limited(std::string_view piece)
{
    std::string result;
    result.reserve(piece.size());
    for (const char byte : piece) {
        take(byte);
        if (byte == '\n' || !m_isTooLarge) {
            result += byte;
        }
    }
    m_removed += piece.size() - result.size();
    return result;
}

void CaptionLimit::take(char byte)
{
    m_arrow = byte == Arrow[m_arrow] ? m_arrow + 1 : 0;
    if (m_arrow == Arrow.size()) {
        m_hasBlocks = true;
        m_arrow = 0;
    }
    ++m_size;
    if (byte == '\n') {
        if (m_isLineEmpty || !m_hasBlocks) {
            m_size = 0;
            m_marks = 0;
            m_isTooLarge = false;
        }
        m_isLineEmpty = true;
    } else {
        m_isLineEmpty = m_isLineEmpty && (byte == '\r' || byte == '\0');
        m_marks += byte == '<' ? 1 : 0;
        const bool isFull = m_size > LargestCaption || m_marks > MostMarks;
        m_isTooLarge = m_isTooLarge || (isFull && !isContinuation(byte));
    }
}

void limitCaptions(GstElement *parser)
{
    const Owned<GstPad> pad(gst_element_get_static_pad(parser, "sink"));
    gst_pad_add_probe(pad.get(),
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM
                                                   | GST_PAD_PROBE_TYPE_EVENT_FLUSH),
                      onPiece, new CaptionLimit, [](gpointer limit) { delete static_cast<CaptionLimit *>(limit); });
}

} // namespace voro::renderer
