#pragma once

#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/media/FileFormat.h>

#include <atomic>
#include <string>

namespace voro::renderer {

/** The decoder for files of a format, made once and used for file after file. */
class DecoderChain {
public:
    explicit DecoderChain(FileFormat format);
    ~DecoderChain();
    DecoderChain(const DecoderChain &) = delete;
    DecoderChain &operator=(const DecoderChain &) = delete;

    FileFormat format() const { return m_format; }
    /** False when the installation lacks a part. */
    bool isComplete() const { return m_decoder != nullptr; }
    GstElement *element() const { return m_bin.get(); }
    /** Takes up a file, while it is in no use; the sound comes out of the pad, which is the file's own. */
    GstPad *open(const std::string &path);
    /** Decodes no more, before nobody takes it. */
    void close() { m_isClosed = true; }

private:
    static GstPadProbeReturn onCoded(GstPad *, GstPadProbeInfo *info, gpointer self);
    static void onPad(GstElement *demuxer, GstPad *pad, gpointer next);

    FileFormat m_format;
    Owned<GstElement> m_bin;
    // Parts of the bin, owned by it.
    GstElement *m_source = nullptr;
    GstElement *m_decoder = nullptr;
    GstPad *m_output = nullptr;
    std::atomic<bool> m_isClosed = false;
};

} // namespace voro::renderer
