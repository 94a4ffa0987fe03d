#include "Module.h"

#include <QtCore/QCoreApplication>

#include <dlfcn.h>

#include <cstdio>

namespace voro {

void *moduleFunction(const char *module, const char *function)
{
    const QByteArray path =
        QCoreApplication::applicationDirPath().toLocal8Bit() + "/" VORO_MODULES "/" + module + ".so";
    void *const library = dlopen(path.constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void *const found = library ? dlsym(library, function) : nullptr;
    if (!found) {
        std::fprintf(stderr, "vorod: %s\n", dlerror());
    }
    return found;
}

} // namespace voro
