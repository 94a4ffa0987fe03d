#include "PluginFolders.h"

#include <renderer/worker/gst/Gst.h>
#include <sys/stat.h>

#include <algorithm>

namespace voro::renderer {

namespace {

timespec lastChange(const std::string &path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mtim : timespec{};
}

} // namespace

PluginFolders::PluginFolders()
{
    GList *plugins = gst_registry_get_plugin_list(gst_registry_get());
    for (GList *entry = plugins; entry; entry = entry->next) {
        if (const gchar *file = gst_plugin_get_filename(GST_PLUGIN(entry->data))) {
            const Owned<char> folder(g_path_get_dirname(file));
            m_times.try_emplace(folder.get(), lastChange(folder.get()));
        }
    }
    gst_plugin_list_free(plugins);
}

bool PluginFolders::haveChanged() const
{
    return std::ranges::any_of(m_times, [](const auto &folder) {
        const timespec now = lastChange(folder.first);
        return now.tv_sec != folder.second.tv_sec || now.tv_nsec != folder.second.tv_nsec;
    });
}

} // namespace voro::renderer
