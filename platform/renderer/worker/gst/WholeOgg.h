#pragma once

#include "Gst.h"

#include <condition_variable>
#include <mutex>
#include <string>

namespace voro::renderer {

/**
 * Stands behind the queue of a source of the net, receives a small Ogg medium whole and lets the demultiplexer read it
 * like a file. A demultiplexer that is pushed data finds the duration too late, if at all, and starts at the beginning
 * of a page instead of at the position that was asked for.
 */
class WholeOgg {
public:
    /**
     * A handler of a bin's "deep-element-added": puts one behind the queue of a uridecodebin that plays a small Ogg
     * medium.
     */
    static void onElementAdded(GstBin *, GstBin *parent, GstElement *element, gpointer);

private:
    WholeOgg(GstElement *element, uint64_t length);

    static GstElement *make(GstPad *source);
    static GstFlowReturn onBuffer(GstPad *pad, GstObject *element, GstBuffer *buffer);
    static gboolean onEvent(GstPad *pad, GstObject *element, GstEvent *event);
    static gboolean onUpstreamEvent(GstPad *pad, GstObject *element, GstEvent *event);
    static gboolean onQuery(GstPad *pad, GstObject *element, GstQuery *query);
    static gboolean onActivation(GstPad *pad, GstObject *element, GstPadMode mode, gboolean isActive);
    static GstFlowReturn onRead(GstPad *pad, GstObject *element, guint64 offset, guint size, GstBuffer **buffer);

    static WholeOgg *of(GstObject *element);
    GstFlowReturn read(uint64_t offset, size_t size, GstBuffer **buffer);
    /** Changes one of the members that a reader waits for. */
    void set(bool &member, bool value);

    const uint64_t m_length;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_content;
    bool m_hasEnded = false;
    bool m_isFlushing = false;
    bool m_isOpen = false;
};

} // namespace voro::renderer
