#pragma once

#include "Piece.h"

#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/media/TrackInfo.h>

#include <atomic>
#include <mutex>

namespace voro::renderer {

/** A playbin's video sink: cuts the wanted part out and shows it. */
class VideoBin {
public:
    VideoBin();
    VideoBin(const VideoBin &) = delete;
    VideoBin &operator=(const VideoBin &) = delete;

    GstElement *element() const { return m_bin.get(); }
    /**
     * Gives the bin, which must not be in use, a fresh sink that draws into a window or frame queue; nothing is seen
     * without one.
     */
    void resetSink(const Window &window, bool hasCaptions);
    /** Draws captions over the pictures; null without captions. */
    GstElement *overlay() const { return m_overlay; }
    void setSource(const Rectangle &part);
    bool isSink(GstObject *object) const;

    /** The size of the pictures that come, nothing while not known. */
    Dimensions dimensions() const;
    /**
     * Posts the element message DecodedMessage at the next picture, or EmptyMessage when the stream ends before one.
     */
    void awaitDecoded() { m_awaitsDecoded = true; }

private:
    static GstPadProbeReturn onInput(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    void crop(const Dimensions &size);
    void turn(const GstTagList *tags);

    Owned<GstElement> m_bin;
    // Parts of the bin, owned by it.
    GstElement *m_crop;
    GstElement *m_convert;
    GstElement *m_last;
    GstElement *m_overlay = nullptr;
    /** Made by a streaming thread. */
    GstElement *m_turn = nullptr;
    GstElement *m_sink = nullptr;
    Owned<GstPad> m_input;
    /** Read by streaming threads. */
    std::atomic<bool> m_awaitsDecoded = false;
    std::mutex m_mutex;
    Rectangle m_part;
};

} // namespace voro::renderer
