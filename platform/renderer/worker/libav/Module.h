#pragma once

#include <cstdint>

/*
 * The part of the worker that reads media with libavformat and libavcodec, for what GStreamer's own elements cannot
 * read. It brings these libraries along and is loaded only when such a medium comes.
 */

namespace voro::renderer {

/** Registers the element that reads the URIs of LibavProtocol that may be opened; false when that fails. */
using MayOpen = bool (*)(const char *uri);
using RegisterLibav = bool (*)(MayOpen mayOpen);

/**
 * The length of a file in milliseconds, counted packet by packet where the file does not tell; 0 when there is none.
 */
using MeasureWithLibav = int64_t (*)(const char *path);

inline constexpr char RegisterLibavName[] = "voroRegisterLibav";
inline constexpr char MeasureWithLibavName[] = "voroMeasureWithLibav";
/** Stands in place of "file" in the URI of a local medium. */
inline constexpr char LibavProtocol[] = "libav";
inline constexpr char LibavElement[] = "vorolibavsrc";

} // namespace voro::renderer
