#pragma once

#include <renderer/common/LocalFile.h>

#include <cstdint>
#include <string>

/*
 * The part of the worker that reads media with libavformat and libavcodec, for what GStreamer's own elements cannot
 * read. It brings these libraries along and is loaded only when such a medium comes.
 */

namespace voro::renderer {

/** Functions of the worker: whether a URI of LibavProtocol may be opened, and opening its file. */
struct LibavHost {
    bool (*mayOpen)(const char *uri);
    LocalFile::Shared (*open)(const std::string &path);
};

/** Registers the element that reads the URIs of LibavProtocol; false when that fails. */
using RegisterLibav = bool (*)(const LibavHost &host);

/**
 * The length of a file in milliseconds, counted packet by packet where the file does not tell; 0 when there is none.
 */
using MeasureWithLibav = int64_t (*)(const char *path, const LocalFile::Shared &file);

inline constexpr char RegisterLibavName[] = "voroRegisterLibav";
inline constexpr char MeasureWithLibavName[] = "voroMeasureWithLibav";
/** Stands in place of "file" in the URI of a local medium. */
inline constexpr char LibavProtocol[] = "libav";
inline constexpr char LibavElement[] = "vorolibavsrc";

} // namespace voro::renderer
