#include "Desktop.h"

#include <services/common/Module.h>

namespace voro::nowplaying {

std::unique_ptr<Desktop> loadDesktop(Desktop::Listener &listener)
{
    const auto make = reinterpret_cast<MakeDesktop *>(moduleFunction("desktop", "voroMakeDesktop"));
    return std::unique_ptr<Desktop>(make ? make(listener) : nullptr);
}

} // namespace voro::nowplaying
