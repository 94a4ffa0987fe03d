#include "Desktop.h"

#include <QtCore/QCoreApplication>

#include <dlfcn.h>

#include <cstdio>

namespace voro::nowplaying {

namespace {

QByteArray modulePath()
{
    return QCoreApplication::applicationDirPath().toLocal8Bit() + "/../lib/voro/desktop.so";
}

} // namespace

std::unique_ptr<Desktop> loadDesktop(Desktop::Listener &listener)
{
    // Never unloaded: Qt keeps what it learned of the types in it.
    void *const module = dlopen(modulePath().constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    const auto make = module ? reinterpret_cast<MakeDesktop *>(dlsym(module, "voroMakeDesktop")) : nullptr;
    if (!make) {
        std::fprintf(stderr, "vorod: %s\n", dlerror());
        return nullptr;
    }
    return std::unique_ptr<Desktop>(make(listener));
}

} // namespace voro::nowplaying
