#pragma once

#include <string_view>

namespace voro::renderer {

/** A kind of file that can be recorded. */
struct RecordingFormat {
    enum class Head { None, Wav, Amr };

    /** The extension of such a file's name, in lower case and without the dot. */
    std::string_view extension;
    /** What makes the file of 16-bit samples, as a pipeline description; empty when samples are written as they are. */
    std::string_view encoder;
    /** What the file begins with that the encoder does not write. */
    Head head = Head::None;
};

/** The format of that extension, whatever its case; null when there is none. */
const RecordingFormat *recordingFormat(std::string_view extension);

} // namespace voro::renderer
