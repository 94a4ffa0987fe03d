#include "DecoderChain.h"

#include <renderer/worker/gst/FileSource.h>
#include <renderer/worker/gst/PacketsBeforeTarget.h>

#include <vector>

namespace voro::renderer {

namespace {

/** From the file to the samples. */
std::vector<const char *> partsFor(FileFormat format)
{
    switch (format) {
    case FileFormat::Wav:
        return {FileSourceElement, "wavparse"};
    case FileFormat::Flac:
        return {FileSourceElement, "flacparse", "flacdec"};
    case FileFormat::Mp3:
        return {FileSourceElement, "mpegaudioparse", "mpg123audiodec"};
    case FileFormat::TaggedMp3:
        return {FileSourceElement, "id3demux", "mpegaudioparse", "mpg123audiodec"};
    case FileFormat::OggVorbis:
        return {FileSourceElement, "oggdemux", "vorbisdec"};
    case FileFormat::OggOpus:
        return {FileSourceElement, "oggdemux", "opusdec"};
    case FileFormat::Mp4Aac:
        return {FileSourceElement, "qtdemux", "aacparse", "faad"};
    case FileFormat::Other:
        break;
    }
    return {};
}

} // namespace

DecoderChain::DecoderChain(FileFormat format)
    : m_format(format),
      m_bin(GST_ELEMENT(gst_object_ref_sink(gst_bin_new(nullptr))))
{
    GstElement *last = nullptr;
    for (const char *name : partsFor(format)) {
        GstElement *part = gst_element_factory_make(name, nullptr);
        if (!part) {
            return;
        }
        gst_bin_add(GST_BIN(m_bin.get()), part);
        if (!last) {
            m_source = part;
        } else if (const Owned<GstPad> output(gst_element_get_static_pad(last, "src")); output) {
            gst_element_link(last, part);
        } else {
            g_signal_connect(last, "pad-added", G_CALLBACK(onPad), part);
        }
        last = part;
    }
    m_decoder = last;
    const Owned<GstPad> input(gst_element_get_static_pad(m_decoder, "sink"));
    gst_pad_add_probe(input.get(), static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_PUSH),
                      onCoded, this, nullptr);
    if (format == FileFormat::OggVorbis || format == FileFormat::OggOpus) {
        skipPacketsBeforeTarget(m_decoder);
    }
}

DecoderChain::~DecoderChain()
{
    gst_element_set_state(m_bin.get(), GST_STATE_NULL);
}

GstPad *DecoderChain::open(const std::string &path)
{
    m_isClosed = false;
    setFilePath(m_source, path);
    if (m_output) {
        gst_pad_set_active(m_output, FALSE);
        gst_element_remove_pad(m_bin.get(), m_output);
    }
    // Data attached to the pad for the last file goes with it.
    const Owned<GstPad> target(gst_element_get_static_pad(m_decoder, "src"));
    m_output = gst_ghost_pad_new("src", target.get());
    gst_element_add_pad(m_bin.get(), m_output);
    return m_output;
}

// Runs in a streaming thread. A decoder may not heed that its samples are refused, and decode the file in vain until
// its turn to stop comes.
GstPadProbeReturn DecoderChain::onCoded(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    if (!static_cast<DecoderChain *>(self)->m_isClosed) {
        return GST_PAD_PROBE_OK;
    }
    gst_buffer_unref(GST_PAD_PROBE_INFO_BUFFER(info));
    GST_PAD_PROBE_INFO_FLOW_RETURN(info) = GST_FLOW_FLUSHING;
    return GST_PAD_PROBE_HANDLED;
}

// Runs in a streaming thread.
void DecoderChain::onPad(GstElement *, GstPad *pad, gpointer next)
{
    const Owned<GstPad> input(gst_element_get_static_pad(static_cast<GstElement *>(next), "sink"));
    if (!gst_pad_is_linked(input.get())) {
        // A stream that does not fit stays unlinked, which ends the file with an error.
        gst_pad_link(pad, input.get());
    }
}

} // namespace voro::renderer
