#pragma once

#include "Mp3Header.h"
#include "WavHeader.h"

#include <pps/Fd.h>
#include <renderer/common/RecordingFormat.h>
#include <renderer/worker/gst/Gst.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace voro::renderer {

/**
 * The end of a recording's pipeline: writes what comes into an open file. What the file held stays until the first
 * byte comes. When a write fails the pipeline gets an error, and nothing is written any more, so that what is there
 * stays readable.
 */
class FileWriter {
public:
    /** `samples` returns the number of samples recorded of each channel. */
    FileWriter(const RecordingFormat &format, std::function<uint64_t()> samples);
    FileWriter(const FileWriter &) = delete;
    FileWriter &operator=(const FileWriter &) = delete;

    GstElement *sink() const { return m_sink.get(); }
    /** Takes the file, while the pipeline does not run. */
    void open(pps::Fd file);
    /**
     * Completes and closes the file, when the pipeline runs no more. What was too short to become anything leaves an
     * empty recording.
     */
    void finish();
    /** Closes the file as it is. */
    void abandon() { m_file.reset(); }

private:
    static GstPadProbeReturn onBuffer(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    static GstPadProbeReturn onEvent(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    static GstPadProbeReturn onQuery(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    void write(GstBuffer *buffer);
    bool write(std::span<const uint8_t> bytes);
    void begin(std::span<const uint8_t> first);
    bool hasLength() const;
    std::vector<uint8_t> head(uint64_t samples) const;
    void writeLength(uint64_t samples);
    void synchronize();
    bool append(const void *bytes, size_t size);
    bool writeAt(uint64_t offset, const void *bytes, size_t size);
    void fail(int error);

    const RecordingFormat::Head m_head;
    const RecordingFormat::Latency m_latency;
    const std::function<uint64_t()> m_samples;
    Owned<GstElement> m_sink;
    // The members below belong to the streaming thread while the pipeline runs.
    pps::Fd m_file;
    uint64_t m_offset = 0;
    /** Behind the last byte that was written. */
    uint64_t m_end = 0;
    Mp3Header m_mp3;
    /** When the head was written last, with the length so far. */
    std::chrono::steady_clock::time_point m_lastHead;
    /** The format of the samples; a valid one before the first of them. */
    SampleSpec m_spec{44'100, 1};
    /** When the file was last synchronized with the disk. */
    std::chrono::steady_clock::time_point m_lastSync;
    bool m_hasBegun = false;
    bool m_hasFailed = false;
};

} // namespace voro::renderer
