#include "Libav.h"

#include <renderer/common/OpenLocal.h>
#include <renderer/worker/libav/Module.h>
#include <renderer/worker/lookup/OpenMedia.h>
#include <renderer/worker/process/Module.h>

namespace voro::renderer {

std::string libavUri(const std::string &uri)
{
    constexpr std::string_view File = "file:";
    if (!uri.starts_with(File)) {
        return {};
    }
    static const auto add = functionOf<RegisterLibav>("libav", RegisterLibavName);
    static const bool isThere =
        add && add({OpenMedia::contains, [](const std::string &path) { return openLocal(path); }});
    return isThere ? LibavProtocol + uri.substr(File.size() - 1) : std::string();
}

int64_t measureWithLibav(const std::string &path)
{
    static const auto measure = functionOf<MeasureWithLibav>("libav", MeasureWithLibavName);
    return measure ? measure(path.c_str(), openLocal(path)) : 0;
}

} // namespace voro::renderer
