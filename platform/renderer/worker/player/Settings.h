#pragma once

#include <renderer/worker/pipeline/Piece.h>

#include <map>
#include <string>

namespace voro::renderer {

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
