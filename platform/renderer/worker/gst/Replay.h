#pragma once

#include "Gst.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>

namespace voro::renderer {

/**
 * Stands behind a source of the net and keeps what came last, so that seeks within that succeed where the server sends
 * a medium only from its beginning. What the server sends in parts goes through as it is.
 */
class Replay {
public:
    /** Puts one behind a source. */
    static void insertBehind(GstElement *source);

private:
    explicit Replay(GstElement *element);

    static GstFlowReturn onBuffer(GstPad *pad, GstObject *element, GstBuffer *buffer);
    static gboolean onEvent(GstPad *pad, GstObject *element, GstEvent *event);
    static gboolean onUpstreamEvent(GstPad *pad, GstObject *element, GstEvent *event);
    static gboolean onQuery(GstPad *pad, GstObject *element, GstQuery *query);
    static gboolean onActivation(GstPad *pad, GstObject *element, GstPadMode mode, gboolean isActive);
    static void onTask(gpointer self);

    static Replay *of(GstObject *element);
    GstFlowReturn keep(GstBuffer *buffer);
    bool seek(GstEvent *event);
    void pushNext();
    Owned<GstBuffer> next();
    bool hasEnded();
    void dropAll();

    GstPad *m_input;
    GstPad *m_output;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    /** Whether the server sends the medium from its beginning only, so that it is kept here. */
    std::atomic<bool> m_keeps = false;
    std::deque<Owned<GstBuffer>> m_buffers;
    /** Places in the medium: where the first buffer begins, where the last one ends, what goes on its way next. */
    uint64_t m_begin = 0;
    uint64_t m_end = 0;
    uint64_t m_next = 0;
    /** The buffer that holds m_next, and where it begins. */
    size_t m_index = 0;
    uint64_t m_indexBegin = 0;
    bool m_hasEnded = false;
    /** Everything stops, or only what goes on its way. */
    bool m_isClosed = false;
    bool m_isSeeking = false;
    GstFlowReturn m_result = GST_FLOW_OK;
};

} // namespace voro::renderer
