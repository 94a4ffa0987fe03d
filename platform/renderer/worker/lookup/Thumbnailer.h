#pragma once

#include <renderer/worker/gst/Gst.h>

#include <functional>

namespace voro::renderer {

/** Makes a small JPEG of a picture that is too large for a report. */
class Thumbnailer {
public:
    using Scaled = std::function<void(GstSample *)>;

    Thumbnailer() = default;
    ~Thumbnailer() { cancel(); }
    Thumbnailer(const Thumbnailer &) = delete;
    Thumbnailer &operator=(const Thumbnailer &) = delete;

    bool isRunning() const { return static_cast<bool>(m_picture); }
    /** Calls `done` from the main loop, with null for what is no picture; begins when nothing else is to be done. */
    void start(GstSample *picture, size_t maximum, Scaled done);
    void cancel();

private:
    static gboolean onIdle(gpointer self);
    static gboolean onMessage(GstBus *bus, GstMessage *message, gpointer self);
    void begin();
    void end();
    void finish(GstSample *thumbnail);

    Owned<GstSample> m_picture;
    size_t m_maximum = 0;
    Scaled m_done;
    /** The longest side in pixels. */
    int m_side = 0;
    Owned<GstElement> m_pipeline;
    MainLoopSource m_idle;
    MainLoopSource m_watch;
};

} // namespace voro::renderer
