#pragma once

#include <pulse/pulseaudio.h>

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>

namespace bench {

/**
 * Watches the sound server: when a stream appears that is there to play, and when the null sink's monitor first hears
 * a sound.
 */
class SoundWatch {
public:
    /** Connects to the server in PULSE_SERVER, whose sink is named "null". */
    SoundWatch();
    ~SoundWatch();
    SoundWatch(const SoundWatch &) = delete;
    SoundWatch &operator=(const SoundWatch &) = delete;

    /** Waits for silence, then forgets what was seen. */
    void arm();
    /** Forgets what was seen, without waiting. */
    void forget();
    /** The times (see now()) of the first stream and the first sound since arm(); 0 when it did not come in time. */
    int64_t streamTime();
    int64_t soundTime();

private:
    static void contextState(pa_context *context, void *self);
    static void streamState(pa_stream *stream, void *self);
    static void serverEvent(pa_context *context, pa_subscription_event_type_t type, uint32_t index, void *self);
    static void streamKnown(pa_context *context, const pa_sink_input_info *stream, int isLast, void *self);
    static void samplesReady(pa_stream *stream, size_t length, void *self);
    int64_t waitFor(const int64_t &time);

    pa_threaded_mainloop *m_loop = nullptr;
    pa_context *m_context = nullptr;
    pa_stream *m_stream = nullptr;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_ready = false;
    /** When streams appeared, by their numbers. */
    std::map<uint32_t, int64_t> m_newStreams;
    int64_t m_streamTime = 0;
    int64_t m_soundTime = 0;
    size_t m_silentSamples = 0;
};

} // namespace bench
