#include "Reader.h"

#include "Metadata.h"

#include <utility>

namespace voro::renderer {

namespace {

/** How much may wait for a stream of which the file has put everything behind the other one. */
constexpr size_t MostWaiting = size_t(256) << 20;

GstClockTime toNanoseconds(int64_t microseconds)
{
    return static_cast<GstClockTime>(microseconds) * 1000;
}

} // namespace

void Reader::start(const std::string &path, OpenFile openFile)
{
    m_container = std::make_unique<Container>();
    m_opener = std::thread([this, path, openFile] { open(path, openFile(path)); });
}

void Reader::stop()
{
    if (m_container) {
        m_container->interrupt();
    }
    if (m_opener.joinable()) {
        m_opener.join();
    }
    for (const Stream &stream : m_streams) {
        gst_pad_set_active(stream.pad, FALSE);
        gst_pad_stop_task(stream.pad);
        gst_element_remove_pad(m_element, stream.pad);
    }
    m_streams.clear();
    m_waiting = 0;
    m_container.reset();
}

// Runs in the opening thread, as all does until the pads have tasks.
void Reader::open(const std::string &path, const LocalFile::Shared &file)
{
    if (!m_container->open(path, file)) {
        fail(GST_STREAM_ERROR_WRONG_TYPE, m_container->problem());
        return;
    }
    const AVFormatContext &context = m_container->context();
    m_tags = tagsOf(context, *file);
    m_group = gst_util_group_id_next();
    // A medium that begins late, by its own count, is played from there; others count from anywhere.
    constexpr int64_t Late = AV_TIME_BASE / 2;
    const int64_t start = m_container->start();
    const bool isLate = start > Late && (context.iformat->flags & AVFMT_TS_DISCONT) == 0;
    m_origin = isLate ? 0 : start;
    gst_segment_init(&m_segment, GST_FORMAT_TIME);
    if (isLate) {
        m_segment.start = m_segment.time = m_segment.position = toNanoseconds(start);
    }
    const int64_t duration = m_container->duration();
    // A seek in a segment of no length would go to its beginning.
    m_segment.duration = duration > 0 ? toNanoseconds(duration) : GST_CLOCK_TIME_NONE;
    std::string problem;
    const bool hasSound = addStream(AVMEDIA_TYPE_AUDIO, "audio", problem);
    const bool hasPictures = addStream(AVMEDIA_TYPE_VIDEO, "video", problem);
    if (!problem.empty() && !hasSound && !hasPictures) {
        // A playbin gives the fitting code a text of its own.
        fail(GST_STREAM_ERROR_FORMAT, problem);
        return;
    }
    if (!hasSound && !hasPictures) {
        fail(GST_STREAM_ERROR_WRONG_TYPE, "there is nothing to hear or to see in the medium");
        return;
    }
    gst_element_no_more_pads(m_element);
    for (Stream &stream : m_streams) {
        gst_pad_start_task(stream.pad, onTurn, &stream, nullptr);
    }
}

bool Reader::addStream(AVMediaType kind, const char *templateName, std::string &problem)
{
    const AVStream *found = m_container->select(kind);
    auto decoder = found ? Decoder::make(*found, m_origin, problem) : nullptr;
    if (!decoder) {
        return false;
    }
    Stream &stream = m_streams.emplace_back(Stream{this, found, std::move(decoder)});
    stream.pad = gst_pad_new_from_template(gst_element_get_pad_template(m_element, templateName), templateName);
    gst_pad_set_element_private(stream.pad, this);
    gst_pad_set_event_function(stream.pad, onEvent);
    gst_pad_set_query_function(stream.pad, onQuery);
    gst_pad_use_fixed_caps(stream.pad);
    gst_pad_set_active(stream.pad, TRUE);
    const Owned<char> id(gst_pad_create_stream_id(stream.pad, m_element, templateName));
    GstEvent *start = gst_event_new_stream_start(id.get());
    gst_event_set_group_id(start, m_group);
    gst_pad_push_event(stream.pad, start);
    gst_element_add_pad(m_element, stream.pad);
    return true;
}

void Reader::fail(int code, const std::string &text)
{
    const Owned<GError> error(g_error_new_literal(GST_STREAM_ERROR, code, text.c_str()));
    gst_element_post_message(m_element, gst_message_new_error(GST_OBJECT(m_element), error.get(), text.c_str()));
}

void Reader::onTurn(gpointer data)
{
    auto *stream = static_cast<Stream *>(data);
    stream->reader->decodeNext(*stream);
}

void Reader::decodeNext(Stream &stream)
{
    const Packet packet = nextOf(stream);
    const GstFlowReturn result =
        stream.decoder->decode(packet.get(), [&](Owned<GstBuffer> buffer, Owned<GstCaps> caps) {
            return push(stream, std::move(buffer), std::move(caps));
        });
    if (packet && result == GST_FLOW_OK) {
        return;
    }
    gst_pad_pause_task(stream.pad);
    if (result == GST_FLOW_NOT_LINKED) {
        const std::lock_guard lock(m_mutex);
        stream.isUnused = true;
        stream.packets.clear();
    } else if (result < GST_FLOW_EOS) {
        fail(GST_STREAM_ERROR_DECODE, gst_flow_get_name(result));
    } else if (result != GST_FLOW_FLUSHING) {
        // Behind a seek to where nothing is left, a sink that waits for its first buffer takes a gap instead.
        announce(stream, currentSegment());
        gst_pad_push_event(stream.pad, gst_event_new_eos());
    }
}

GstSegment Reader::currentSegment()
{
    const std::lock_guard lock(m_mutex);
    return m_segment;
}

Packet Reader::nextOf(Stream &stream)
{
    const std::lock_guard lock(m_mutex);
    while (stream.packets.empty()) {
        Packet packet = m_container->read();
        if (!packet) {
            return nullptr;
        }
        for (Stream &other : m_streams) {
            if (other.stream->index == packet->stream_index && !other.isUnused) {
                m_waiting += static_cast<size_t>(packet->size);
                other.packets.push_back(std::move(packet));
                break;
            }
        }
        if (m_waiting > MostWaiting) {
            fail(GST_STREAM_ERROR_DEMUX, "what belongs together is too far apart in the file");
            return nullptr;
        }
    }
    Packet packet = std::move(stream.packets.front());
    stream.packets.pop_front();
    m_waiting -= static_cast<size_t>(packet->size);
    return packet;
}

GstFlowReturn Reader::push(Stream &stream, Owned<GstBuffer> buffer, Owned<GstCaps> caps)
{
    if (caps) {
        gst_pad_push_event(stream.pad, gst_event_new_caps(caps.get()));
    }
    const GstSegment segment = currentSegment();
    const GstClockTime begin = GST_BUFFER_PTS(buffer.get());
    const GstClockTime length = GST_BUFFER_DURATION(buffer.get());
    if (GST_CLOCK_TIME_IS_VALID(length) && begin + length <= segment.start) {
        // On the way to where a seek goes.
        return GST_FLOW_OK;
    }
    announce(stream, segment);
    return gst_pad_push(stream.pad, buffer.release());
}

void Reader::announce(Stream &stream, const GstSegment &segment)
{
    if (std::exchange(stream.isSegmentDue, false)) {
        gst_pad_push_event(stream.pad, gst_event_new_segment(&segment));
    }
    if (std::exchange(stream.areTagsDue, false)) {
        gst_pad_push_event(stream.pad, gst_event_new_tag(gst_tag_list_ref(m_tags.get())));
    }
}

gboolean Reader::onEvent(GstPad *pad, GstObject *element, GstEvent *event)
{
    if (GST_EVENT_TYPE(event) != GST_EVENT_SEEK) {
        return gst_pad_event_default(pad, element, event);
    }
    const Owned<GstEvent> owned(event);
    return static_cast<Reader *>(gst_pad_get_element_private(pad))->seek(event) ? TRUE : FALSE;
}

bool Reader::seek(GstEvent *event)
{
    gdouble rate = 1;
    GstFormat format{};
    GstSeekFlags flags{};
    GstSeekType startType{};
    GstSeekType stopType{};
    gint64 start = 0;
    gint64 stop = 0;
    gst_event_parse_seek(event, &rate, &format, &flags, &startType, &start, &stopType, &stop);
    if (rate <= 0 || format != GST_FORMAT_TIME || (flags & GST_SEEK_FLAG_FLUSH) == 0) {
        return false;
    }
    const std::lock_guard seeking(m_seeking);
    const guint32 number = gst_event_get_seqnum(event);
    const auto flushStream = [&](Stream &stream, GstEvent *flush) {
        gst_event_set_seqnum(flush, number);
        gst_pad_push_event(stream.pad, flush);
    };
    for (Stream &stream : m_streams) {
        flushStream(stream, gst_event_new_flush_start());
    }
    for (Stream &stream : m_streams) {
        gst_pad_pause_task(stream.pad);
        // The task holds the lock while it takes its turn.
        GST_PAD_STREAM_LOCK(stream.pad);
        GST_PAD_STREAM_UNLOCK(stream.pad);
    }
    std::optional<int64_t> place;
    {
        const std::lock_guard lock(m_mutex);
        gst_segment_do_seek(&m_segment, rate, format, flags, startType, static_cast<guint64>(start), stopType,
                            static_cast<guint64>(stop), nullptr);
        place = m_container->seek(static_cast<int64_t>(m_segment.start / 1000) + m_origin);
        m_waiting = 0;
    }
    for (Stream &stream : m_streams) {
        stream.packets.clear();
        stream.decoder->restart(place.value_or(0));
        stream.isSegmentDue = true;
        flushStream(stream, gst_event_new_flush_stop(TRUE));
        gst_pad_start_task(stream.pad, onTurn, &stream, nullptr);
    }
    return place.has_value();
}

gboolean Reader::onQuery(GstPad *pad, GstObject *element, GstQuery *query)
{
    auto *reader = static_cast<Reader *>(gst_pad_get_element_private(pad));
    GstFormat format = GST_FORMAT_TIME;
    if (GST_QUERY_TYPE(query) == GST_QUERY_DURATION) {
        gst_query_parse_duration(query, &format, nullptr);
        const guint64 duration = reader->m_segment.duration;
        if (format == GST_FORMAT_TIME && GST_CLOCK_TIME_IS_VALID(duration)) {
            gst_query_set_duration(query, format, static_cast<gint64>(duration));
            return TRUE;
        }
        return FALSE;
    }
    if (GST_QUERY_TYPE(query) == GST_QUERY_SEEKING) {
        gst_query_parse_seeking(query, &format, nullptr, nullptr, nullptr);
        gst_query_set_seeking(query, format, format == GST_FORMAT_TIME, 0, -1);
        return TRUE;
    }
    return gst_pad_query_default(pad, element, query);
}

} // namespace voro::renderer
