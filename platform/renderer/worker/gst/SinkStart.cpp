#include "SinkStart.h"

#include <gst/audio/audio.h>

namespace voro::renderer {

void startSink(GstElement *serverSink)
{
    auto *sink = reinterpret_cast<GstAudioBaseSink *>(serverSink);
    GstAudioRingBuffer *buffer = sink->ringbuffer;
    // Whoever pauses the buffer holds its lock.
    GST_OBJECT_LOCK(buffer);
    if (!buffer->flushing && g_atomic_int_get(&buffer->state) == GST_AUDIO_RING_BUFFER_STATE_STARTED) {
        // At the end of a stream, which may be shorter than the buffer, the sink does not wait.
        const gboolean isEnd = g_atomic_int_get(&sink->eos_rendering);
        g_atomic_int_set(&sink->eos_rendering, TRUE);
        GST_AUDIO_RING_BUFFER_GET_CLASS(buffer)->start(buffer);
        g_atomic_int_set(&sink->eos_rendering, isEnd);
    }
    GST_OBJECT_UNLOCK(buffer);
}

} // namespace voro::renderer
