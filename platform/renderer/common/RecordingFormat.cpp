#include "RecordingFormat.h"

#include <strings.h>

#include <algorithm>
#include <array>

namespace voro::renderer {

namespace {

using Head = RecordingFormat::Head;

// Containers are written so that a file that is cut off anywhere plays: pages and fragments of at most half a second.
constexpr std::array Formats{
    RecordingFormat{"wav", "", Head::Wav},
    RecordingFormat{"ogg", "audioconvert ! vorbisenc quality=0.5 ! oggmux max-page-delay=500000000"},
    RecordingFormat{"opus", "audioconvert ! opusenc bitrate=96000 ! oggmux max-page-delay=500000000"},
    RecordingFormat{"flac", "audioconvert ! flacenc"},
    RecordingFormat{"mp3", "audioconvert ! lamemp3enc target=quality quality=2", Head::Mp3, {.delay = 576}},
    RecordingFormat{"m4a",
                    "audioconvert ! voaacenc bitrate=128000 ! aacparse ! "
                    "mp4mux movie-timescale=1000 fragment-duration=500 fragment-mode=first-moov-then-finalise",
                    Head::Mp4,
                    {.delay = 1600, .block = 1024}},
    RecordingFormat{"amr", "audioconvert ! amrnbenc", Head::Amr, {.delay = 40, .block = 160}},
};

} // namespace

const RecordingFormat *recordingFormat(std::string_view extension)
{
    const auto found = std::find_if(Formats.begin(), Formats.end(), [extension](const RecordingFormat &format) {
        return format.extension.size() == extension.size()
               && strncasecmp(format.extension.data(), extension.data(), extension.size()) == 0;
    });
    return found == Formats.end() ? nullptr : &*found;
}

} // namespace voro::renderer
