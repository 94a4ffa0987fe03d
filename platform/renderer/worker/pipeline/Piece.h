#pragma once

#include <renderer/common/Settings.h>
#include <renderer/worker/video/FrameChannel.h>

#include <string>

namespace voro::renderer {

/** Where a medium is played to. */
struct Outputs {
    bool isAudible = true;
    /** The sound server's role for the stream; empty for none. */
    std::string role;
    /** Whether pictures and captions are wanted, and where they are drawn. */
    bool hasVideo = false;
    bool hasCaptions = false;
    Window window;
    Window captionWindow;

    bool operator==(const Outputs &) const = default;
    /** Captions are drawn over the pictures when both have the same window. */
    bool areCaptionsOverVideo() const { return hasVideo && hasCaptions && window == captionWindow; }
};

/** A medium to be played, and how. */
struct Piece {
    Medium medium;
    CaptionChoice captions;
    Outputs outputs;
    /** Whether volume or equalizer are being changed, which is to be heard soon. */
    bool isChanging = false;

    /** Whether it may be decoded long before it is heard: sound alone, of this machine. */
    bool mayBeFarAhead() const { return !isChanging && medium.isLocal() && !outputs.hasVideo && !outputs.hasCaptions; }
    /** Whether captions come from a file of their own; one whose texts nobody takes would end the medium. */
    bool hasCaptionFile() const { return outputs.hasCaptions && !captions.medium.isEmpty(); }
};

} // namespace voro::renderer
