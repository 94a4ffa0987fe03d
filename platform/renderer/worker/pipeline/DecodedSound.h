#pragma once

#include "Ahead.h"

#include <renderer/worker/gst/Gst.h>

#include <mutex>

namespace voro::renderer {

/**
 * Watches what is decoded on its way to the queue, in our format. Far ahead it goes there rarely and in large pieces,
 * because every piece wakes up the thread behind the queue, this one and the sound server's.
 */
class DecodedSound {
public:
    DecodedSound() = default;
    DecodedSound(const DecodedSound &) = delete;
    DecodedSound &operator=(const DecodedSound &) = delete;

    /** Watches a pad, which must not outlive this object. */
    void watch(GstPad *pad);
    /** Begins a medium, while nothing flows. */
    void begin(Ahead ahead);
    /** Has what waits go on, in any streaming thread: nothing else may come for long. */
    void passOn();

private:
    static GstPadProbeReturn onData(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    GstPadProbeReturn onBuffer(GstPadProbeInfo *info);
    void pace(GstClockTime duration);
    GstPadProbeReturn join(GstPadProbeInfo *info);
    void passOnJoined();
    GstBuffer *finished();

    GstPad *m_pad = nullptr;
    Ahead m_ahead = Ahead::Little;
    /** How much was decoded since a medium began or was sought in. Only the thread that decodes uses it. */
    GstClockTime m_decoded = 0;
    /** Held until a buffer that waited is in the queue, so that none overtakes it. */
    std::mutex m_mutex;
    /** What waits until it is enough. */
    Owned<GstBuffer> m_joined;
    /** How many bytes of that are sound. */
    gsize m_filled = 0;
};

} // namespace voro::renderer
