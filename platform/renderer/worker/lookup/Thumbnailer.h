#pragma once

#include <renderer/worker/gst/Gst.h>

#include <functional>

namespace voro::renderer {

/** Makes a small JPEG of a picture that is too large for a report. */
class Thumbnailer {
public:
    using Done = std::function<void(GstSample *)>;

    Thumbnailer() = default;
    ~Thumbnailer() { cancel(); }
    Thumbnailer(const Thumbnailer &) = delete;
    Thumbnailer &operator=(const Thumbnailer &) = delete;

    bool isRunning() const { return static_cast<bool>(m_picture); }
    /** Calls `done` from the main loop, with null for what is no picture; begins when nothing else is to be done. */
    void start(GstSample *picture, size_t maximum, Done done);
    void cancel();

private:
    static gboolean onIdle(gpointer self);
    static gboolean onMessage(GstBus *bus, GstMessage *message, gpointer self);
    void begin();
    void end();
    void finish(GstSample *thumbnail);

    Owned<GstSample> m_picture;
    size_t m_maximum = 0;
    Done m_done;
    /** The longest side in pixels. */
    int m_side = 0;
    Owned<GstElement> m_pipeline;
    Source m_idle;
    Source m_watch;
};

} // namespace voro::renderer
