#include <dlfcn.h>
#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/proplist.h>
#include <pulse/stream.h>
#include <pulse/timeval.h>

#include <algorithm>

// These functions replace those of the sound server's library in the whole process, for GStreamer's elements too.

namespace {

/** The library's function of that name. */
template<typename Function>
Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

/** Whether a stream may have played or recorded as long as that, by what the server has said at its last report. */
bool isPossible(pa_usec_t time, pa_stream *stream)
{
    // The server reports at least every 1.5 s.
    constexpr pa_usec_t Latest = 10 * PA_USEC_PER_SEC;
    const pa_timing_info *report = pa_stream_get_timing_info(stream);
    const int64_t bytes = report ? std::max<int64_t>({0, report->read_index, report->write_index}) : 0;
    return time <= pa_bytes_to_usec(static_cast<uint64_t>(bytes), pa_stream_get_sample_spec(stream)) + Latest;
}

} // namespace

extern "C" {

/** Connections without shared memory: each piece that the server is done with would wake a worker. */
__attribute__((visibility("default"))) pa_context *pa_context_new(pa_mainloop_api *loop, const char *name)
{
    pa_proplist *properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_CONTEXT_FORCE_DISABLE_SHM, "1");
    pa_context *context = pa_context_new_with_proplist(loop, name, properties);
    pa_proplist_free(properties);
    return context;
}

/** Without the flag the library keeps the largest time that it ever said, also one that cannot be. */
__attribute__((visibility("default"))) int pa_stream_connect_playback(pa_stream *stream, const char *device,
                                                                      const pa_buffer_attr *attributes,
                                                                      pa_stream_flags_t flags, const pa_cvolume *volume,
                                                                      pa_stream *other)
{
    static const auto connect = next<decltype(pa_stream_connect_playback)>("pa_stream_connect_playback");
    return connect(stream, device, attributes, static_cast<pa_stream_flags_t>(flags | PA_STREAM_NOT_MONOTONIC), volume,
                   other);
}

/**
 * Fails when the stream cannot have played as long as the library says: its unsigned arithmetic may wrap around when a
 * stream resumes, to a hundred thousand years. After the failure clocks keep their last time.
 */
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
