#include <dlfcn.h>
#include <pulse/stream.h>
#include <pulse/timeval.h>

// Whoever plays through the sound server, as GStreamer's sink does, comes by here instead of going to the server's
// library. That one calculates the time of a stream without signs: in the moment that a stream goes on it may say that
// a hundred thousand years were played, and it never says less afterwards. The stream would be heard, but its position
// would stand still for ever.

namespace {

/** The library's function of that name. */
template<typename Function>
Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

/** Whether a stream may have played as long as that, by what the server has said at its last report. */
bool isPossible(pa_usec_t time, const pa_stream *stream)
{
    // The server reports at least every 1.5 s.
    constexpr pa_usec_t Latest = 10 * PA_USEC_PER_SEC;
    const pa_timing_info *report = pa_stream_get_timing_info(const_cast<pa_stream *>(stream));
    const auto bytes = report && report->read_index > 0 ? static_cast<uint64_t>(report->read_index) : 0;
    return time <= pa_bytes_to_usec(bytes, pa_stream_get_sample_spec(const_cast<pa_stream *>(stream))) + Latest;
}

} // namespace

extern "C" {

/** Such a time does not stay. Sinks take care themselves that their clocks do not run backward. */
__attribute__((visibility("default"))) int pa_stream_connect_playback(pa_stream *stream, const char *device,
                                                                      const pa_buffer_attr *attributes,
                                                                      pa_stream_flags_t flags, const pa_cvolume *volume,
                                                                      pa_stream *other)
{
    static const auto connect = next<decltype(pa_stream_connect_playback)>("pa_stream_connect_playback");
    return connect(stream, device, attributes, static_cast<pa_stream_flags_t>(flags | PA_STREAM_NOT_MONOTONIC), volume,
                   other);
}

/** Such a time is none. */
__attribute__((visibility("default"))) int pa_stream_get_time(pa_stream *stream, pa_usec_t *time)
{
    static const auto timeOf = next<decltype(pa_stream_get_time)>("pa_stream_get_time");
    pa_usec_t played = 0;
    if (const int result = timeOf(stream, &played); result < 0) {
        return result;
    }
    if (!isPossible(played, stream)) {
        return -PA_ERR_NODATA;
    }
    if (time) {
        *time = played;
    }
    return 0;
}
}
