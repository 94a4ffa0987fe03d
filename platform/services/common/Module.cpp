#include "Module.h"

#include <QtCore/QCoreApplication>

#include <dlfcn.h>
#include <pps/Log.h>

namespace voro {

void *moduleFunction(const char *module, const char *function)
{
    const QByteArray path =
        QCoreApplication::applicationDirPath().toLocal8Bit() + "/" VORO_MODULES "/" + module + ".so";
    void *const library = dlopen(path.constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void *const found = library ? dlsym(library, function) : nullptr;
    if (!found) {
        log::warn(log::Category::Daemon, "%s", dlerror());
    }
    return found;
}

} // namespace voro
