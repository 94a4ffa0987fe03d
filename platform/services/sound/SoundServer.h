#pragma once

#include "Sounds.h"

#include <memory>
#include <string>

namespace voro::sound {

/**
 * A connection to the sound server, made when it is needed and again when it was lost. It is a module, loaded with the
 * first sound, because what it links would make every daemon start slower.
 */
class SoundServer {
public:
    enum class Action {
        /** Gives the server the sound to keep. */
        Prepare,
        Play,
    };

    /** The problem that no server answers. */
    static constexpr std::string_view NoServer = "no sound server answers";

    virtual ~SoundServer() = default;
    /** Waits for the server. The result is empty, or a problem for people that stays valid. */
    virtual std::string_view perform(Action action, const Sound &sound) = 0;
};

/** The module's entry; its name is `voroMakeSoundServer`. It takes the folder of the project's own sounds. */
using MakeSoundServer = SoundServer *(const std::string &folder);

/** Loads the module; null, and a line in the log, when that fails. */
std::unique_ptr<SoundServer> loadSoundServer(const std::string &folder);

} // namespace voro::sound
