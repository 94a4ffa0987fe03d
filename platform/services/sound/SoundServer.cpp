#include "SoundServer.h"

#include <dlfcn.h>

#include <cstdio>

namespace voro::sound {

std::unique_ptr<SoundServer> loadSoundServer(const std::string &modulePath, const std::string &folder)
{
    // Never unloaded: problems that it told of are its own texts.
    void *const module = dlopen(modulePath.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    const auto make = module ? reinterpret_cast<MakeSoundServer *>(dlsym(module, "voroMakeSoundServer")) : nullptr;
    if (!make) {
        std::fprintf(stderr, "vorod: %s\n", dlerror());
        return nullptr;
    }
    return std::unique_ptr<SoundServer>(make(folder));
}

} // namespace voro::sound
