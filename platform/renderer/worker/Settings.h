#pragma once

#include "Pipeline.h"

#include <map>
#include <string>

namespace voro::renderer {

/** Which captions a track is shown with. */
struct CaptionChoice {
    /** Captions from elsewhere, as an input URL; empty without. */
    std::string url;
    int index = 0;
    bool areShown = true;
};

/** What the application set. */
struct Settings {
    int speed = 1000;
    guint interval = 1000;
    long volume = 100;
    std::string preset;
    std::string repeat;
    bool pausesWithDevice = false;
    Outputs outputs;
    Rectangle source;
    std::map<unsigned, CaptionChoice> captions;
};

} // namespace voro::renderer
