#include "FileWriter.h"

#include "Mp4Edit.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <tuple>
#include <utility>

namespace voro::renderer {

using Head = RecordingFormat::Head;

namespace {

constexpr std::string_view AmrHead = "#!AMR\n";
/** How much of a recording a loss of power may cost, but for what the disk adds. */
constexpr std::chrono::seconds SyncInterval(2);
constexpr std::chrono::seconds HeadInterval(1);

} // namespace

FileWriter::FileWriter(const RecordingFormat &format, std::function<uint64_t()> samples)
    : m_head(format.head),
      m_latency(format.latency),
      m_samples(std::move(samples)),
      m_sink(GST_ELEMENT(gst_object_ref_sink(makeElement("fakesink"))))
{
    g_object_set(m_sink.get(), "async", FALSE, nullptr);
    const Owned<GstPad> pad(gst_element_get_static_pad(m_sink.get(), "sink"));
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_BUFFER, onBuffer, this, nullptr);
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onEvent, this, nullptr);
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, onQuery, this, nullptr);
}

void FileWriter::open(pps::Fd file)
{
    m_file = std::move(file);
    m_offset = m_end = 0;
    m_mp3 = {};
    m_hasBegun = m_hasFailed = false;
}

void FileWriter::finish()
{
    if (m_file.isValid() && !m_hasBegun) {
        begin({});
    }
    if (m_file.isValid() && hasLength()) {
        // The head was written at the beginning, so there is room for it on a full disk, too.
        writeLength(m_samples());
    }
    m_file.reset();
}

// Runs in a streaming thread, as all that follows.
GstPadProbeReturn FileWriter::onBuffer(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    static_cast<FileWriter *>(self)->write(GST_PAD_PROBE_INFO_BUFFER(info));
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn FileWriter::onEvent(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    auto *writer = static_cast<FileWriter *>(self);
    GstEvent *event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) == GST_EVENT_SEGMENT) {
        const GstSegment *segment = nullptr;
        gst_event_parse_segment(event, &segment);
        if (segment->format == GST_FORMAT_BYTES) {
            // Somebody completes what was written before.
            writer->m_offset = segment->start;
        }
    } else if (GST_EVENT_TYPE(event) == GST_EVENT_CAPS) {
        GstCaps *caps = nullptr;
        gst_event_parse_caps(event, &caps);
        const GstStructure *structure = gst_caps_get_structure(caps, 0);
        gst_structure_get_int(structure, "rate", &writer->m_spec.rate);
        gst_structure_get_int(structure, "channels", &writer->m_spec.channels);
    }
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn FileWriter::onQuery(GstPad *, GstPadProbeInfo *info, gpointer)
{
    GstQuery *query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_SEEKING) {
        return GST_PAD_PROBE_OK;
    }
    GstFormat format = GST_FORMAT_UNDEFINED;
    gst_query_parse_seeking(query, &format, nullptr, nullptr, nullptr);
    gst_query_set_seeking(query, format, format == GST_FORMAT_BYTES, 0, -1);
    return GST_PAD_PROBE_HANDLED;
}

void FileWriter::write(GstBuffer *buffer)
{
    GstMapInfo map;
    if (m_hasFailed || !m_file.isValid() || !gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        return;
    }
    const std::span<const uint8_t> bytes(map.data, map.size);
    if (!m_hasBegun) {
        begin(bytes);
    }
    if (write(bytes)) {
        synchronize();
    }
    gst_buffer_unmap(buffer, &map);
}

bool FileWriter::write(std::span<const uint8_t> bytes)
{
    if (m_head == Head::Mp4 && isMp4Index(bytes)) {
        std::vector<uint8_t> index(bytes.begin(), bytes.end());
        setMp4Edit(index, static_cast<uint64_t>(m_latency.delay), m_samples());
        return append(index.data(), index.size());
    }
    const bool isWritten = append(bytes.data(), bytes.size());
    if (isWritten && m_head == Head::Mp3) {
        m_mp3.add(bytes.size());
    }
    return isWritten;
}

/**
 * Writes the length so far into the head now and then, and starts to synchronize the file with the disk, without
 * waiting for the end. The system alone would keep the data in memory much longer.
 */
void FileWriter::synchronize()
{
    const auto now = std::chrono::steady_clock::now();
    if (hasLength() && now - m_lastHead >= HeadInterval) {
        m_lastHead = now;
        writeLength(Mp3Header::Unknown);
    }
    if (now - m_lastSync >= SyncInterval) {
        m_lastSync = now;
        sync_file_range(m_file.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
    }
}

/** Writes the file's length into its head. */
void FileWriter::writeLength(uint64_t samples)
{
    const std::vector<uint8_t> bytes = head(samples);
    writeAt(0, bytes.data(), bytes.size());
}

/** Whether the head of the file holds its length. */
bool FileWriter::hasLength() const
{
    return m_head == Head::Wav || m_head == Head::Mp3;
}

/** Replaces what the file held. */
void FileWriter::begin(std::span<const uint8_t> first)
{
    m_hasBegun = true;
    if (ftruncate(m_file.get(), 0) != 0) {
        fail(errno);
    } else {
        m_mp3.begin(first);
        const std::vector<uint8_t> bytes = head(Mp3Header::Unknown);
        append(bytes.data(), bytes.size());
    }
}

/** The head of the file. */
std::vector<uint8_t> FileWriter::head(uint64_t samples) const
{
    if (m_head == Head::Wav) {
        const uint64_t size = m_offset > sizeof(WavHeader) ? m_offset - sizeof(WavHeader) : 0;
        const WavHeader header = wavHeader(m_spec, size - size % m_spec.frameSize());
        return {header.begin(), header.end()};
    }
    if (m_head == Head::Mp3) {
        return m_mp3.bytes(samples, m_latency.delay);
    }
    return m_head == Head::Amr ? std::vector<uint8_t>(AmrHead.begin(), AmrHead.end()) : std::vector<uint8_t>();
}

bool FileWriter::append(const void *bytes, size_t size)
{
    if (m_hasFailed) {
        return false;
    }
    if (!writeAt(m_offset, bytes, size)) {
        if (m_offset == m_end) {
            // A part of a frame would be an error in the file; where that cannot be helped it stays.
            std::ignore = ftruncate(m_file.get(), static_cast<off_t>(m_end));
        }
        return false;
    }
    m_offset += size;
    m_end = std::max(m_end, m_offset);
    return true;
}

bool FileWriter::writeAt(uint64_t offset, const void *bytes, size_t size)
{
    const auto *next = static_cast<const char *>(bytes);
    while (size > 0) {
        const ssize_t written = pwrite(m_file.get(), next, size, static_cast<off_t>(offset));
        if (written < 0 && errno != EINTR) {
            fail(errno);
            return false;
        }
        const size_t progress = written > 0 ? static_cast<size_t>(written) : 0;
        next += progress;
        offset += progress;
        size -= progress;
    }
    return true;
}

void FileWriter::fail(int error)
{
    if (std::exchange(m_hasFailed, true)) {
        return;
    }
    const bool isFull = error == ENOSPC || error == EDQUOT || error == EFBIG;
    const Owned<GError> problem(
        g_error_new_literal(GST_RESOURCE_ERROR, isFull ? GST_RESOURCE_ERROR_NO_SPACE_LEFT : GST_RESOURCE_ERROR_WRITE,
                            std::strerror(error)));
    gst_element_post_message(m_sink.get(), gst_message_new_error(GST_OBJECT(m_sink.get()), problem.get(), nullptr));
}

} // namespace voro::renderer
