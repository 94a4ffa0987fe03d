#pragma once

#include <string_view>

namespace voro::renderer {

/** A kind of file that can be recorded. */
struct RecordingFormat {
    enum class Head { None, Wav, Amr, Mp3, Mp4 };
    /** How an encoder shifts what it encodes, in samples. */
    struct Latency {
        /** By how much it is late. */
        int delay = 0;
        /**
         * How many it takes at a time, when it keeps what it has at the end: that is filled up with silence until
         * everything has come out.
         */
        int block = 0;
    };

    /** The extension of such a file's name, in lower case and without the dot. */
    std::string_view extension;
    /** The encoder for 16-bit samples, as a pipeline description; empty when samples are written as they are. */
    std::string_view encoder;
    /** The head that is added to the encoder's output. */
    Head head = Head::None;
    /** Of the encoders that do not settle it themselves. */
    Latency latency = {};
};

/** The format of that extension, whatever its case; null when there is none. */
const RecordingFormat *recordingFormat(std::string_view extension);

} // namespace voro::renderer
