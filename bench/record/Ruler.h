#pragma once

#include <pulse/pulseaudio.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <span>

namespace bench {

/** Plays a sound of which every sample tells its number into the null sink, and notes when its monitor gives it out. */
class Ruler {
public:
    Ruler();
    ~Ruler();
    Ruler(const Ruler &) = delete;
    Ruler &operator=(const Ruler &) = delete;

    /** Waits until the monitor has given out so much more of it. */
    void await(std::chrono::milliseconds sound);
    /** When the monitor gave out the first of these frames of 16-bit stereo; nothing when they are not the ruler's. */
    std::optional<int64_t> timeOf(std::span<const int16_t> frames);

private:
    struct Mark {
        int64_t frame;
        int64_t time;
    };

    static void contextState(pa_context *context, void *self);
    static void samplesWanted(pa_stream *stream, size_t length, void *self);
    static void samplesReady(pa_stream *stream, size_t length, void *self);

    pa_threaded_mainloop *m_loop = nullptr;
    pa_context *m_context = nullptr;
    pa_stream *m_playing = nullptr;
    pa_stream *m_monitor = nullptr;
    int64_t m_nextFrame = 1;
    std::mutex m_mutex;
    std::condition_variable m_marked;
    /** The last frames of what the monitor gave out together. */
    std::deque<Mark> m_marks;
};

} // namespace bench
