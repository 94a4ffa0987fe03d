#pragma once

#include <renderer/common/Names.h>
#include <renderer/common/Speed.h>
#include <renderer/worker/pipeline/Piece.h>

#include <map>

namespace voro::renderer {

/** What the application set. */
struct Settings {
    Speed speed;
    guint interval = 1000;
    long volume = 100;
    Preset preset = Preset::Off;
    RepeatMode repeat = RepeatMode::None;
    bool pausesWithDevice = false;
    Outputs outputs;
    Rectangle source;
    std::map<unsigned, CaptionChoice> captions;
};

} // namespace voro::renderer
