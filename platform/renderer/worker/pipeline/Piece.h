#pragma once

#include <renderer/common/Medium.h>
#include <renderer/worker/video/FrameChannel.h>

#include <string>

namespace voro::renderer {

/** A part of a picture; all of it when it has no size. */
struct Rectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Rectangle &) const = default;
};

/** Where a medium is played to. */
struct Outputs {
    bool isAudible = true;
    /** What the sound is for, empty when nobody said so. */
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

/** Which captions a track is shown with. */
struct CaptionChoice {
    /** Captions from elsewhere, if there are any. */
    Medium medium;
    int index = 0;
    bool areShown = true;
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
