#include "SoundServer.h"

#include <services/common/Module.h>

namespace voro::sound {

std::unique_ptr<SoundServer> loadSoundServer(const std::string &folder)
{
    const auto make = reinterpret_cast<MakeSoundServer *>(moduleFunction("sound", "voroMakeSoundServer"));
    return std::unique_ptr<SoundServer>(make ? make(folder) : nullptr);
}

} // namespace voro::sound
