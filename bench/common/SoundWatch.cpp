#include "SoundWatch.h"

#include "Figures.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

using namespace std::chrono_literals;

namespace bench {

namespace {

constexpr pa_sample_spec Format = {PA_SAMPLE_S16LE, 48'000, 1};
constexpr int Threshold = 500;
/** This much silence means that what played before is out of the sink. */
constexpr size_t SilenceBefore = 48'000 / 5;

SoundWatch *watch(void *self)
{
    return static_cast<SoundWatch *>(self);
}

} // namespace

SoundWatch::SoundWatch()
{
    m_loop = pa_threaded_mainloop_new();
    m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), "bench");
    pa_context_set_state_callback(m_context, contextState, this);
    pa_context_set_subscribe_callback(m_context, serverEvent, this);
    pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    pa_threaded_mainloop_start(m_loop);
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait_for(lock, 10s, [this] { return m_ready; })) {
        std::fprintf(stderr, "no sound server\n");
        std::exit(1);
    }
}

SoundWatch::~SoundWatch()
{
    pa_threaded_mainloop_stop(m_loop);
    pa_stream_unref(m_stream);
    pa_context_unref(m_context);
    pa_threaded_mainloop_free(m_loop);
}

void SoundWatch::contextState(pa_context *context, void *self)
{
    if (pa_context_get_state(context) != PA_CONTEXT_READY) {
        return;
    }
    pa_operation_unref(pa_context_subscribe(context, PA_SUBSCRIPTION_MASK_SINK_INPUT, nullptr, nullptr));
    watch(self)->m_stream = pa_stream_new(context, "monitor", &Format, nullptr);
    pa_stream *stream = watch(self)->m_stream;
    pa_stream_set_state_callback(stream, streamState, self);
    pa_stream_set_read_callback(stream, samplesReady, self);
    pa_buffer_attr attributes = {};
    attributes.maxlength = static_cast<uint32_t>(-1);
    attributes.fragsize = static_cast<uint32_t>(pa_usec_to_bytes(1000, &Format));
    pa_stream_connect_record(stream, "null.monitor", &attributes, PA_STREAM_ADJUST_LATENCY);
}

void SoundWatch::streamState(pa_stream *stream, void *self)
{
    if (pa_stream_get_state(stream) != PA_STREAM_READY) {
        return;
    }
    const std::lock_guard lock(watch(self)->m_mutex);
    watch(self)->m_ready = true;
    watch(self)->m_changed.notify_all();
}

void SoundWatch::serverEvent(pa_context *context, pa_subscription_event_type_t type, uint32_t index, void *self)
{
    if ((type & PA_SUBSCRIPTION_EVENT_TYPE_MASK) != PA_SUBSCRIPTION_EVENT_NEW) {
        return;
    }
    {
        const std::lock_guard lock(watch(self)->m_mutex);
        watch(self)->m_newStreams[index] = now();
    }
    pa_operation_unref(pa_context_get_sink_input_info(context, index, streamKnown, self));
}

void SoundWatch::streamKnown(pa_context *, const pa_sink_input_info *stream, int, void *self)
{
    // GStreamer asks the server what it can by a stream that never plays.
    if (!stream || std::string_view(stream->name) == "pulsesink probe") {
        return;
    }
    const std::lock_guard lock(watch(self)->m_mutex);
    const auto found = watch(self)->m_newStreams.find(stream->index);
    if (watch(self)->m_streamTime == 0 && found != watch(self)->m_newStreams.end()) {
        watch(self)->m_streamTime = found->second;
    }
    watch(self)->m_changed.notify_all();
}

void SoundWatch::samplesReady(pa_stream *stream, size_t, void *self)
{
    const int64_t time = now();
    const void *data = nullptr;
    size_t length = 0;
    const std::lock_guard lock(watch(self)->m_mutex);
    while (pa_stream_readable_size(stream) > 0 && pa_stream_peek(stream, &data, &length) == 0 && length > 0) {
        const auto *samples = static_cast<const int16_t *>(data);
        for (size_t i = 0; data && i < length / sizeof(int16_t); ++i) {
            const bool isSound = std::abs(samples[i]) > Threshold;
            watch(self)->m_silentSamples = isSound ? 0 : watch(self)->m_silentSamples + 1;
            if (isSound && watch(self)->m_soundTime == 0) {
                watch(self)->m_soundTime = time;
            }
        }
        pa_stream_drop(stream);
    }
    watch(self)->m_changed.notify_all();
}

void SoundWatch::arm()
{
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, 10s, [this] { return m_silentSamples >= SilenceBefore; });
    }
    forget();
}

void SoundWatch::forget()
{
    const std::lock_guard lock(m_mutex);
    m_newStreams.clear();
    m_streamTime = 0;
    m_soundTime = 0;
}

int64_t SoundWatch::waitFor(const int64_t &time)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, 5s, [&time] { return time != 0; });
    return time;
}

int64_t SoundWatch::streamTime()
{
    return waitFor(m_streamTime);
}

int64_t SoundWatch::soundTime()
{
    return waitFor(m_soundTime);
}

} // namespace bench
