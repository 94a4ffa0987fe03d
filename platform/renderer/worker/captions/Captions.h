#pragma once

#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/video/FrameChannel.h>

#include <atomic>
#include <string>

namespace voro::renderer {

/**
 * Shows captions, over the pictures or in a window of their own. Its element takes a playbin's text, each when its
 * time has come. Each is hidden at its end in the time of the pipeline: later when that holds or plays slowly.
 */
class Captions {
public:
    Captions();
    ~Captions();
    Captions(const Captions &) = delete;
    Captions &operator=(const Captions &) = delete;

    GstElement *element() const { return m_sink.get(); }
    /** Draws into a window or frame queue of its own from now on; into none with an empty name. */
    void setWindow(const Window &window);
    /** Draws with an overlay that somebody else owns. */
    void setOverlay(GstElement *overlay);
    /** Hides the captions, or shows them again. */
    void setShown(bool isShown);
    /** Whether the pipeline plays. */
    void setRunning(bool isRunning);
    /** Hides the caption, and drops those on their way from streaming threads. */
    void clear();

private:
    struct Caption {
        Captions *owner;
        unsigned epoch;
        std::string text;
        /** In the running time of the pipeline. */
        GstClockTime end;
    };

    static void onText(GstElement *sink, GstBuffer *buffer, GstPad *pad, gpointer self);
    static GstPadProbeReturn onFlush(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    static gboolean onPosted(gpointer caption);
    static gboolean onEnd(gpointer self);
    void post(std::string text, GstClockTime end);
    void armTimer();
    GstClockTime untilEnd() const;
    void show(const std::string &text);
    void draw();

    Owned<GstElement> m_sink;
    Owned<GstElement> m_pipeline;
    /** A part of the pipeline, or of somebody else's. */
    Owned<GstElement> m_overlay;
    /** The captions that are due now. */
    std::string m_text;
    GstClockTime m_end = GST_CLOCK_TIME_NONE;
    bool m_isShown = true;
    bool m_isRunning = false;
    MainLoopSource m_timer;
    /** Counts calls of clear(). */
    std::atomic<unsigned> m_epoch = 0;
    Window m_window;
};

} // namespace voro::renderer
