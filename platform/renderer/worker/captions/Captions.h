#pragma once

#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/video/FrameChannel.h>

#include <string>

namespace voro::renderer {

/**
 * Shows captions, over the pictures or in a window of their own. Its element takes a playbin's text, each when its
 * time has come.
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
    void clear();

private:
    static void onText(GstElement *sink, GstBuffer *buffer, GstPad *pad, gpointer self);
    static GstPadProbeReturn onFlush(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    static gboolean onOver(gpointer self);
    /** Takes over, in the main loop, what a streaming thread left in m_next. */
    static gboolean onNext(gpointer self);
    void leave(std::string text, GstClockTime duration);
    void show(const std::string &text);
    void draw();

    struct Caption {
        Captions *owner;
        std::string text;
        GstClockTime duration;
    };

    Owned<GstElement> m_sink;
    Owned<GstElement> m_pipeline;
    /** A part of the pipeline, or of somebody else's. */
    Owned<GstElement> m_overlay;
    /** The captions that are due now. */
    std::string m_text;
    bool m_isShown = true;
    MainLoopSource m_timer;
    Window m_window;
};

} // namespace voro::renderer
