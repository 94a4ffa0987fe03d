#pragma once

#include "Ahead.h"

#include <renderer/worker/gst/Gst.h>

#include <atomic>
#include <cstdint>
#include <mutex>

namespace voro::renderer {

/** Watches what goes to an audio sink: the sink starts early, and plays a format to its end before the next one. */
class SinkWatch {
public:
    /** Where a stream ends and the next one begins. */
    struct Boundary {
        /** When that is heard, as a running time of the pipeline. */
        GstClockTime time = 0;
        /** The position there of the stream that ends, in milliseconds. */
        int64_t end = 0;
    };

    SinkWatch() { gst_segment_init(&m_segment, GST_FORMAT_TIME); }
    SinkWatch(const SinkWatch &) = delete;
    SinkWatch &operator=(const SinkWatch &) = delete;

    /** Watches a pad, which must not outlive this object. */
    void watch(GstPad *pad);
    /** Begins a medium, while nothing flows. `serverSink` is null for other sinks, which are left as they are. */
    void begin(GstElement *serverSink, Ahead ahead);
    /** The last boundary that went to the sink. */
    Boundary boundary() const;
    /**
     * Whether another thread than the caller's may be exchanging the sink's stream at the server for one of another
     * format. Whoever asks the sink for the time meanwhile makes it report that its stream is dead.
     */
    bool isExchangedElsewhere() const
    {
        const GThread *thread = m_exchanging;
        return thread && thread != g_thread_self();
    }

private:
    static GstPadProbeReturn onData(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    void onEvent(GstPad *pad, GstEvent *event);

    bool isFarAhead() const { return m_serverSink && m_ahead == Ahead::Much; }
    void note(const GstBuffer *buffer);
    void noteFormat(GstPad *pad, GstCaps *format);
    void noteBoundary();

    GstElement *m_serverSink = nullptr;
    Ahead m_ahead = Ahead::Little;
    /** The thread that may be exchanging the stream. */
    std::atomic<GThread *> m_exchanging = nullptr;
    // Only the streaming thread uses what follows.
    Owned<GstCaps> m_format;
    GstSegment m_segment;
    /** Where the last buffer ends in the segment. */
    GstClockTime m_end = GST_CLOCK_TIME_NONE;
    /** How much has come since the segment began. */
    GstClockTime m_sent = 0;

    mutable std::mutex m_mutex;
    Boundary m_boundary;
};

} // namespace voro::renderer
