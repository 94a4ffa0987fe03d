#pragma once

#include "Error.h"

#include <pps/Text.h>

#include <cstdint>
#include <string>
#include <string_view>

/*
 * The messages between applications, the renderer service and its workers. A request carries `msg`, `id` and the
 * request's own attributes (parameters as attribute lines in `dat`); its answer carries `res`, `id` and `err`, for a
 * failure also `error` (the cause in words).
 */

namespace voro::renderer {

inline constexpr std::string_view ServicePath = "/pps/services/multimedia/renderer/control";
inline constexpr std::string_view ContextFolder = "/pps/services/multimedia/renderer/context/";
inline constexpr std::string_view WorkerPath = "/pps/services/multimedia/renderer/worker/control";
/** The socket to the daemon that a worker is started with. */
inline constexpr int WorkerSocket = 3;
/** The socket over which it gets the files that it writes. */
inline constexpr int WorkerFilesSocket = 4;

/** The longest name of a context, URL and list of metadata, so that no message outgrows its bound. */
inline constexpr size_t MaximumContextName = 200;
inline constexpr size_t MaximumUrl = 8 * 1024;
inline constexpr size_t MaximumMetadata = 48 * 1024;

/** How the URL of an output for pictures begins. */
inline constexpr std::string_view ScreenScheme = "screen:";
/** The attributes that name the X server of the application's session, and the file with the right to use it. */
inline constexpr std::string_view DisplayName = "display";
inline constexpr std::string_view AuthorityName = "xauthority";

/** Where a worker has got to, in milliseconds. */
inline constexpr std::string_view PositionName = "position";

/** The longest queue. */
inline constexpr int64_t MostTracks = 10'000;
/** How far from the current track others are shown. */
inline constexpr unsigned Neighbourhood = 2;

/** The first lines of a request. */
std::string beginRequest(std::string_view command, int64_t id);
/** An answer to a request; a cause that is too long is cut. */
std::string answer(std::string_view command, int64_t id, const Result &result);
/** The code that a number stands for; Internal for one that is none. */
ErrorCode codeOf(int64_t number);
/** The result in an answer. */
Result resultOf(const pps::Message &answer);

} // namespace voro::renderer
