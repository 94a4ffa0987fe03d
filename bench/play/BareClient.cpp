#include "BareClient.h"

#include "Figures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace bench {

namespace {

constexpr pa_sample_spec Format = {PA_SAMPLE_FLOAT32NE, 48'000, 2};

} // namespace

BareClient::BareClient() : m_tone(2 * Format.rate)
{
    for (size_t i = 0; i < m_tone.size(); ++i) {
        m_tone[i] = static_cast<float>(std::sin(2 * std::numbers::pi * 440 * static_cast<double>(i / 2) / Format.rate));
    }
    m_loop = pa_threaded_mainloop_new();
    m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), "bare client");
    pa_context_set_state_callback(m_context, changed, m_loop);
    pa_threaded_mainloop_lock(m_loop);
    pa_threaded_mainloop_start(m_loop);
    pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    while (PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context)) && pa_context_get_state(m_context) != PA_CONTEXT_READY) {
        pa_threaded_mainloop_wait(m_loop);
    }
    pa_threaded_mainloop_unlock(m_loop);
}

BareClient::~BareClient()
{
    stop();
    pa_threaded_mainloop_stop(m_loop);
    pa_context_unref(m_context);
    pa_threaded_mainloop_free(m_loop);
}

void BareClient::changed(pa_context *, void *loop)
{
    pa_threaded_mainloop_signal(static_cast<pa_threaded_mainloop *>(loop), 0);
}

void BareClient::writable(pa_stream *stream, size_t length, void *self)
{
    const std::vector<float> &tone = static_cast<BareClient *>(self)->m_tone;
    const size_t size = std::min(length, tone.size() * sizeof(float));
    pa_stream_write(stream, tone.data(), size, nullptr, 0, PA_SEEK_RELATIVE);
}

int64_t BareClient::play(const std::string &)
{
    const int64_t asked = now();
    pa_threaded_mainloop_lock(m_loop);
    m_stream = pa_stream_new(m_context, "tone", &Format, nullptr);
    pa_stream_set_write_callback(m_stream, writable, this);
    // As much as our streams begin with: it is heard at once.
    pa_buffer_attr amounts{};
    amounts.maxlength = static_cast<uint32_t>(-1);
    amounts.tlength = static_cast<uint32_t>(pa_usec_to_bytes(200'000, &Format));
    amounts.minreq = static_cast<uint32_t>(pa_usec_to_bytes(10'000, &Format));
    pa_stream_connect_playback(m_stream, nullptr, &amounts, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr);
    pa_threaded_mainloop_unlock(m_loop);
    return asked;
}

void BareClient::stop()
{
    if (!m_stream) {
        return;
    }
    pa_threaded_mainloop_lock(m_loop);
    pa_stream_disconnect(m_stream);
    pa_stream_unref(m_stream);
    pa_threaded_mainloop_unlock(m_loop);
    m_stream = nullptr;
}

} // namespace bench
