#pragma once

#include <string>

namespace voro::renderer {

/** The formats of which every file is decoded by the same few parts, one after the other. */
enum class FileFormat { Other, Wav, Flac, Mp3, TaggedMp3, OggVorbis, OggOpus, Mp4Aac };

/**
 * What a file is, by its content. Other, too, for files of these formats that hold more than one stream or that are put
 * together in an uncommon way. It is a look at a few places only: decoding may show that the file is something else.
 */
FileFormat fileFormat(const std::string &path);

/**
 * Whether a file is in a format of which GStreamer's own elements tell no tags, a wrong duration, or less than there
 * is.
 */
bool isReadBestByLibavformat(const std::string &path);

/**
 * Whether a file's length is guessed by who reads its container, which does not tell it: MPEG transport streams,
 * fragmented MP4, Matroska as browsers record it.
 */
bool hasGuessedLength(const std::string &path);

} // namespace voro::renderer
