#include "Ruler.h"

#include "Figures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace std::chrono_literals;

namespace bench {

namespace {

constexpr pa_sample_spec Format = {PA_SAMPLE_S16LE, 48'000, 2};
/** The left sample tells the low bits, the right one the high bits, in steps that survive a conversion's noise. */
constexpr int LowBits = 15;
constexpr int HighStep = 64;
constexpr int64_t Noise = 8;
constexpr size_t KeptMarks = 100'000;
/** So many frames have to follow each other to be the ruler's. */
constexpr int64_t ProvingFrames = 64;

Ruler *ruler(void *self)
{
    return static_cast<Ruler *>(self);
}

int64_t numberAt(std::span<const int16_t> frames, size_t frame)
{
    return static_cast<int64_t>(frames[frame * 2])
           + (static_cast<int64_t>(std::lround(frames[frame * 2 + 1] / static_cast<double>(HighStep))) << LowBits);
}

} // namespace

Ruler::Ruler()
{
    m_loop = pa_threaded_mainloop_new();
    m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), "ruler");
    pa_context_set_state_callback(m_context, contextState, this);
    pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    pa_threaded_mainloop_start(m_loop);
}

Ruler::~Ruler()
{
    pa_threaded_mainloop_stop(m_loop);
    for (pa_stream *stream : {m_playing, m_monitor}) {
        if (stream) {
            pa_stream_unref(stream);
        }
    }
    pa_context_unref(m_context);
    pa_threaded_mainloop_free(m_loop);
}

void Ruler::contextState(pa_context *context, void *self)
{
    if (pa_context_get_state(context) != PA_CONTEXT_READY) {
        return;
    }
    Ruler *that = ruler(self);
    pa_buffer_attr attributes;
    std::fill_n(reinterpret_cast<uint8_t *>(&attributes), sizeof(attributes), static_cast<uint8_t>(0xff));
    attributes.fragsize = static_cast<uint32_t>(pa_usec_to_bytes(1000, &Format));
    that->m_monitor = pa_stream_new(context, "ruler's monitor", &Format, nullptr);
    pa_stream_set_read_callback(that->m_monitor, samplesReady, self);
    pa_stream_connect_record(that->m_monitor, "null.monitor", &attributes, PA_STREAM_ADJUST_LATENCY);
    that->m_playing = pa_stream_new(context, "ruler", &Format, nullptr);
    pa_stream_set_write_callback(that->m_playing, samplesWanted, self);
    pa_stream_connect_playback(that->m_playing, "null", nullptr, PA_STREAM_NOFLAGS, nullptr, nullptr);
}

void Ruler::samplesWanted(pa_stream *stream, size_t length, void *self)
{
    std::vector<int16_t> samples(length / sizeof(int16_t));
    for (size_t i = 0; i + 1 < samples.size(); i += 2) {
        const int64_t number = ruler(self)->m_nextFrame++;
        samples[i] = static_cast<int16_t>(number & ((1 << LowBits) - 1));
        samples[i + 1] = static_cast<int16_t>((number >> LowBits) * HighStep);
    }
    pa_stream_write(stream, samples.data(), samples.size() * sizeof(int16_t), nullptr, 0, PA_SEEK_RELATIVE);
}

void Ruler::samplesReady(pa_stream *stream, size_t, void *self)
{
    const void *data = nullptr;
    size_t length = 0;
    while (pa_stream_readable_size(stream) > 0 && pa_stream_peek(stream, &data, &length) == 0 && length > 0) {
        const std::span samples(static_cast<const int16_t *>(data), length / sizeof(int16_t));
        if (data && samples.size() >= 2) {
            const int64_t last = numberAt(samples, samples.size() / 2 - 1);
            const std::lock_guard lock(ruler(self)->m_mutex);
            auto &marks = ruler(self)->m_marks;
            if (last > 0) {
                marks.push_back({last, now()});
            }
            if (marks.size() > KeptMarks) {
                marks.pop_front();
            }
            ruler(self)->m_marked.notify_all();
        }
        pa_stream_drop(stream);
    }
}

void Ruler::await(std::chrono::milliseconds sound)
{
    std::unique_lock lock(m_mutex);
    const int64_t frames = sound.count() * Format.rate / 1000;
    const int64_t end = (m_marks.empty() ? 0 : m_marks.back().frame) + frames;
    if (!m_marked.wait_for(lock, 2 * sound + 10s, [&] { return !m_marks.empty() && m_marks.back().frame >= end; })) {
        std::fprintf(stderr, "no sound comes from the monitor\n");
        std::exit(1);
    }
}

std::optional<int64_t> Ruler::timeOf(std::span<const int16_t> frames)
{
    if (frames.size() < 2 * ProvingFrames) {
        return std::nullopt;
    }
    const int64_t first = numberAt(frames, 0);
    for (int64_t i = 1; i < ProvingFrames; ++i) {
        if (std::abs(numberAt(frames, static_cast<size_t>(i)) - first - i) > Noise) {
            return std::nullopt;
        }
    }
    const std::lock_guard lock(m_mutex);
    const auto mark = std::lower_bound(m_marks.begin(), m_marks.end(), first,
                                       [](const Mark &earlier, int64_t frame) { return earlier.frame < frame; });
    if (mark == m_marks.end()) {
        return std::nullopt;
    }
    return mark->time - (mark->frame - first) * 1'000'000'000 / static_cast<int64_t>(Format.rate);
}

} // namespace bench
