#include "Trim.h"

#include <gst/audio/audio.h>
#include <renderer/worker/media/Mp3Length.h>

#include <algorithm>
#include <optional>

namespace voro::renderer {

namespace {

/** The part of one stream that is sound, in the decoder's time. */
class Trim {
public:
    /** A quarter of a sample inside, because the times of buffers are rounded. */
    explicit Trim(const Mp3Sound &sound)
        : m_start(toTime(4 * sound.first + 1, sound.rate)),
          m_length(toTime(4 * (sound.first + sound.count) - 1, sound.rate) - m_start)
    {}

    static GstPadProbeReturn onData(GstPad *, GstPadProbeInfo *info, gpointer self)
    {
        auto *trim = static_cast<Trim *>(self);
        if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) {
            return trim->cut(info);
        }
        if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_QUERY_BOTH) {
            trim->answer(info);
            return GST_PAD_PROBE_OK;
        }
        GstEvent *event = GST_PAD_PROBE_INFO_EVENT(info);
        switch (GST_EVENT_TYPE(event)) {
        case GST_EVENT_CAPS: {
            GstCaps *caps = nullptr;
            gst_event_parse_caps(event, &caps);
            gst_audio_info_from_caps(&trim->m_format, caps);
            break;
        }
        case GST_EVENT_SEGMENT:
            trim->replace(info, trim->trimmedSegment(event));
            break;
        case GST_EVENT_SEEK:
            trim->replace(info, trim->shiftedSeek(event));
            break;
        default:
            break;
        }
        return GST_PAD_PROBE_OK;
    }

private:
    static GstClockTime toTime(int64_t quarters, int rate)
    {
        return gst_util_uint64_scale_round(static_cast<guint64>(quarters), GST_SECOND, 4 * static_cast<guint64>(rate));
    }

    GstPadProbeReturn cut(GstPadProbeInfo *info)
    {
        if (!GST_AUDIO_INFO_IS_VALID(&m_format) || m_segment.format != GST_FORMAT_TIME) {
            return GST_PAD_PROBE_OK;
        }
        GstBuffer *rest = gst_audio_buffer_clip(GST_PAD_PROBE_INFO_BUFFER(info), &m_segment,
                                                GST_AUDIO_INFO_RATE(&m_format), GST_AUDIO_INFO_BPF(&m_format));
        GST_PAD_PROBE_INFO_DATA(info) = rest;
        return rest ? GST_PAD_PROBE_OK : GST_PAD_PROBE_HANDLED;
    }

    /** The decoder knows of all that it decodes. */
    void answer(GstPadProbeInfo *info) const
    {
        GstQuery *query = GST_PAD_PROBE_INFO_QUERY(info);
        if (GST_QUERY_TYPE(query) == GST_QUERY_DURATION && GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_PULL) {
            GstFormat format = GST_FORMAT_UNDEFINED;
            gst_query_parse_duration(query, &format, nullptr);
            if (format == GST_FORMAT_TIME) {
                gst_query_set_duration(query, format, static_cast<gint64>(m_length));
            }
        }
    }

    GstEvent *trimmedSegment(GstEvent *event)
    {
        gst_event_copy_segment(event, &m_segment);
        if (m_segment.format == GST_FORMAT_TIME) {
            const GstClockTime end = m_start + m_length;
            m_segment.start = std::clamp(m_segment.start, m_start, end);
            m_segment.stop =
                GST_CLOCK_TIME_IS_VALID(m_segment.stop) ? std::clamp(m_segment.stop, m_segment.start, end) : end;
            m_segment.time = m_segment.start - m_start;
            m_segment.position = std::clamp(m_segment.position, m_segment.start, m_segment.stop);
            m_segment.duration = m_length;
        }
        return gst_event_new_segment(&m_segment);
    }

    GstEvent *shiftedSeek(GstEvent *event) const
    {
        gdouble rate = 1;
        GstFormat format = GST_FORMAT_UNDEFINED;
        GstSeekFlags flags = GST_SEEK_FLAG_NONE;
        GstSeekType startType = GST_SEEK_TYPE_NONE;
        GstSeekType stopType = GST_SEEK_TYPE_NONE;
        gint64 start = 0;
        gint64 stop = 0;
        gst_event_parse_seek(event, &rate, &format, &flags, &startType, &start, &stopType, &stop);
        const auto shift = [&](GstSeekType type, gint64 time) {
            return format == GST_FORMAT_TIME && type == GST_SEEK_TYPE_SET && time >= 0
                       ? time + static_cast<gint64>(m_start)
                       : time;
        };
        return gst_event_new_seek(rate, format, flags, startType, shift(startType, start), stopType,
                                  shift(stopType, stop));
    }

    static void replace(GstPadProbeInfo *info, GstEvent *event)
    {
        GstEvent *old = GST_PAD_PROBE_INFO_EVENT(info);
        gst_event_set_seqnum(event, gst_event_get_seqnum(old));
        gst_event_unref(old);
        GST_PAD_PROBE_INFO_DATA(info) = event;
    }

    const GstClockTime m_start;
    const GstClockTime m_length;
    GstSegment m_segment{};
    GstAudioInfo m_format{};
};

} // namespace

void trimEncoderDelay(GstPad *stream, const std::string &path)
{
    if (const auto sound = mp3Sound(path)) {
        gst_pad_add_probe(stream,
                          static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_BOTH
                                                       | GST_PAD_PROBE_TYPE_QUERY_BOTH),
                          Trim::onData, new Trim(*sound), [](gpointer trim) { delete static_cast<Trim *>(trim); });
    }
}

} // namespace voro::renderer
