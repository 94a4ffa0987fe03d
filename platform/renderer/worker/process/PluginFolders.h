#pragma once

#include <sys/types.h>

#include <ctime>
#include <map>
#include <string>

namespace voro::renderer {

/** The folders from which GStreamer has its plugins. */
class PluginFolders {
public:
    /** As they are now. */
    PluginFolders();

    /** Whether plugins came or went since. */
    bool haveChanged() const;

private:
    std::map<std::string, timespec> m_times;
};

} // namespace voro::renderer
