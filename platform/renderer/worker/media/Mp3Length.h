#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace voro::renderer {

/** The decoded samples that are sound: an encoder puts some before them and fills the last frame up behind them. */
struct Mp3Sound {
    int64_t first;
    int64_t count;
    /** Samples in a second. */
    int rate;
};

/** Whether a file is MPEG audio, layer III, behind the tags that may stand before it. */
bool isMp3(const std::string &path);

/**
 * What the encoder of a file of MPEG audio, layer III, tells in the file's first frame; nothing where it tells
 * nothing.
 */
std::optional<Mp3Sound> mp3Sound(const std::string &path);

/**
 * The length in milliseconds of a file of MPEG audio, layer III, counted frame by frame; nothing for what is none and
 * for what tells its number of frames itself. A large file takes its time.
 */
std::optional<int64_t> mp3Length(const std::string &path);

} // namespace voro::renderer
