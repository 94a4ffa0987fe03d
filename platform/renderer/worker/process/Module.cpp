#include "Module.h"

#include <dlfcn.h>
#include <pps/Log.h>
#include <renderer/worker/gst/Gst.h>

namespace voro::renderer {

std::string moduleFolder()
{
    const Owned<char> program(g_file_read_link("/proc/self/exe", nullptr));
    const Owned<char> folder(g_path_get_dirname(program.get()));
    const Owned<char> modules(g_canonicalize_filename(VORO_MODULES, folder.get()));
    return modules.get();
}

void *symbolOf(const std::string &module, const char *name)
{
    void *const library = dlopen((moduleFolder() + '/' + module + ".so").c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        log::warn(log::Category::Worker, "%s", dlerror());
        return nullptr;
    }
    return dlsym(library, name);
}

} // namespace voro::renderer
