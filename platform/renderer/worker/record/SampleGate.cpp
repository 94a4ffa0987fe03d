#include "SampleGate.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace voro::renderer {

namespace {

/** How many parts of a second the two sides of a cut are blended over. */
constexpr int BlendsPerSecond = 200;
constexpr double LowestDecibels = 60;
constexpr int FullScale = 32768;

} // namespace

int levelOf(int peak)
{
    if (peak <= 0) {
        return 0;
    }
    const double decibels = 20 * std::log10(static_cast<double>(peak) / FullScale);
    return std::clamp(static_cast<int>(std::lround(100 + decibels * 100 / LowestDecibels)), 0, 100);
}

SampleGate::SampleGate(GstElement *element, RecordingFormat::Latency latency)
    : m_element(element),
      m_latency(latency),
      m_input(gst_element_get_static_pad(element, "sink")),
      m_pad(gst_element_get_static_pad(element, "src"))
{
    gst_pad_add_probe(m_input.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onInput, this, nullptr);
    gst_pad_add_probe(m_pad.get(), GST_PAD_PROBE_TYPE_BUFFER, onBuffer, this, nullptr);
    gst_pad_add_probe(m_pad.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onEvent, this, nullptr);
}

SampleGate::~SampleGate() = default;

void SampleGate::setOpen(bool isOpen)
{
    const std::lock_guard lock(m_mutex);
    m_isOpen = isOpen;
}

void SampleGate::setLimit(unsigned milliseconds)
{
    const std::lock_guard lock(m_mutex);
    m_limit = milliseconds;
}

void SampleGate::reset(bool isOpen)
{
    const std::lock_guard lock(m_mutex);
    m_isOpen = isOpen;
    m_hasSegment = false;
    m_isFirst = true;
    m_frames = 0;
    m_peak.reset();
    m_level = 0;
    m_tail.clear();
    m_blended = 0;
}

void SampleGate::end()
{
    setOpen(false);
    // The source may be in the middle of a buffer; what comes in by the same way waits for it.
    gst_pad_send_event(m_input.get(), gst_event_new_eos());
}

int64_t SampleGate::position() const
{
    const std::lock_guard lock(m_mutex);
    return m_spec.rate > 0 ? static_cast<int64_t>(m_frames * 1000 / static_cast<uint64_t>(m_spec.rate)) : 0;
}

uint64_t SampleGate::frames() const
{
    const std::lock_guard lock(m_mutex);
    return m_frames;
}

int SampleGate::takeLevel()
{
    const std::lock_guard lock(m_mutex);
    if (m_peak) {
        m_level = levelOf(*m_peak);
        m_peak.reset();
    }
    return m_level;
}

// Runs in a streaming thread, as all that follows.
GstPadProbeReturn SampleGate::onBuffer(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    return static_cast<SampleGate *>(self)->pass(info);
}

GstPadProbeReturn SampleGate::onEvent(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    return static_cast<SampleGate *>(self)->pass(GST_PAD_PROBE_INFO_EVENT(info), info);
}

GstPadProbeReturn SampleGate::onInput(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_EOS) {
        static_cast<SampleGate *>(self)->fill();
    }
    return GST_PAD_PROBE_OK;
}

/** Appends the silence that drives the last samples out of the encoder. */
void SampleGate::fill()
{
    GstBuffer *silence = nullptr;
    {
        const std::lock_guard lock(m_mutex);
        const auto block = static_cast<uint64_t>(m_latency.block);
        if (block == 0 || m_frames == 0) {
            return;
        }
        const uint64_t needed = m_frames + static_cast<uint64_t>(m_latency.delay) + block - 1;
        const uint64_t frames = needed - needed % block - m_frames;
        silence = gst_buffer_new_allocate(nullptr, frames * m_spec.frameSize(), nullptr);
        gst_buffer_memset(silence, 0, 0, frames * m_spec.frameSize());
        stamp(silence, frames);
        m_isFilling = true;
    }
    gst_pad_push(m_pad.get(), silence);
}

GstPadProbeReturn SampleGate::pass(GstEvent *event, GstPadProbeInfo *info)
{
    const std::lock_guard lock(m_mutex);
    switch (GST_EVENT_TYPE(event)) {
    case GST_EVENT_CAPS: {
        GstCaps *caps = nullptr;
        gst_event_parse_caps(event, &caps);
        const GstStructure *structure = gst_caps_get_structure(caps, 0);
        gst_structure_get_int(structure, "rate", &m_spec.rate);
        gst_structure_get_int(structure, "channels", &m_spec.channels);
        return GST_PAD_PROBE_OK;
    }
    case GST_EVENT_SEGMENT: {
        if (std::exchange(m_hasSegment, true)) {
            return GST_PAD_PROBE_DROP;
        }
        GstSegment segment;
        gst_segment_init(&segment, GST_FORMAT_TIME);
        GST_PAD_PROBE_INFO_DATA(info) = gst_event_new_segment(&segment);
        gst_event_unref(event);
        return GST_PAD_PROBE_OK;
    }
    case GST_EVENT_GAP:
        return GST_PAD_PROBE_DROP;
    default:
        return GST_PAD_PROBE_OK;
    }
}

GstPadProbeReturn SampleGate::pass(GstPadProbeInfo *info)
{
    const std::lock_guard lock(m_mutex);
    if (std::exchange(m_isFilling, false)) {
        return GST_PAD_PROBE_OK;
    }
    GstBuffer *buffer = gst_buffer_make_writable(GST_PAD_PROBE_INFO_BUFFER(info));
    GST_PAD_PROBE_INFO_DATA(info) = buffer;
    GstMapInfo map;
    if (m_spec.rate == 0 || !gst_buffer_map(buffer, &map, GST_MAP_READWRITE)) {
        return GST_PAD_PROBE_DROP;
    }
    if (std::exchange(m_isFirst, false)) {
        gst_element_post_message(m_element,
                                 gst_message_new_element(GST_OBJECT(m_element), gst_structure_new_empty(FirstMessage)));
    }
    auto *samples = reinterpret_cast<int16_t *>(map.data);
    const size_t count = map.size / sizeof(int16_t);
    measure(samples, count);
    if (m_isOpen) {
        blend(samples, count);
    } else if (m_frames > 0) {
        keep(samples, count);
    }
    gst_buffer_unmap(buffer, &map);
    const uint64_t frames = m_isOpen ? allowed(map.size / m_spec.frameSize()) : 0;
    if (frames == 0) {
        return GST_PAD_PROBE_DROP;
    }
    gst_buffer_set_size(buffer, static_cast<gssize>(frames * m_spec.frameSize()));
    stamp(buffer, frames);
    m_frames += frames;
    return GST_PAD_PROBE_OK;
}

/** How many of so many frames still pass. */
uint64_t SampleGate::allowed(uint64_t frames) const
{
    if (m_limit == 0) {
        return frames;
    }
    const uint64_t all = gst_util_uint64_scale_ceil(m_limit, static_cast<guint64>(m_spec.rate), 1000);
    return std::min(frames, all - std::min(all, m_frames));
}

/** Gives a buffer of so many frames its place behind what has passed. */
void SampleGate::stamp(GstBuffer *buffer, uint64_t frames) const
{
    const auto rate = static_cast<uint64_t>(m_spec.rate);
    const uint64_t end = m_frames + frames;
    GST_BUFFER_PTS(buffer) = gst_util_uint64_scale(m_frames, GST_SECOND, rate);
    GST_BUFFER_DURATION(buffer) = gst_util_uint64_scale(end, GST_SECOND, rate) - GST_BUFFER_PTS(buffer);
    GST_BUFFER_DTS(buffer) = GST_CLOCK_TIME_NONE;
    GST_BUFFER_OFFSET(buffer) = m_frames;
    GST_BUFFER_OFFSET_END(buffer) = end;
    GST_BUFFER_FLAG_UNSET(buffer, GST_BUFFER_FLAG_DISCONT);
    GST_BUFFER_FLAG_UNSET(buffer, GST_BUFFER_FLAG_RESYNC);
}

void SampleGate::measure(const int16_t *samples, size_t count)
{
    int peak = m_peak.value_or(0);
    for (size_t i = 0; i < count; ++i) {
        peak = std::max(peak, std::abs(static_cast<int>(samples[i])));
    }
    m_peak = peak;
}

void SampleGate::keep(const int16_t *samples, size_t count)
{
    if (std::exchange(m_blended, 0) > 0) {
        m_tail.clear();
    }
    const size_t most = static_cast<size_t>(m_spec.rate / BlendsPerSecond) * static_cast<size_t>(m_spec.channels);
    m_tail.insert(m_tail.end(), samples, samples + std::min(count, most - m_tail.size()));
}

/** Goes over from what would have come after the cut to what comes now. */
void SampleGate::blend(int16_t *samples, size_t count)
{
    const auto length = static_cast<int>(m_tail.size());
    const int16_t *const end = samples + std::min(count, m_tail.size() - m_blended);
    for (; samples != end; ++samples, ++m_blended) {
        const auto share = static_cast<int>(m_blended);
        *samples = int16_t((*samples * share + m_tail[m_blended] * (length - share)) / length);
    }
    if (m_blended == m_tail.size()) {
        m_tail.clear();
        m_blended = 0;
    }
}

} // namespace voro::renderer
