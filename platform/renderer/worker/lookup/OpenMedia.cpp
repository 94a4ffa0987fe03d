#include "OpenMedia.h"

#include <renderer/worker/gst/FileSource.h>
#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/libav/Module.h>

#include <algorithm>
#include <array>
#include <mutex>
#include <set>
#include <string_view>

namespace voro::renderer {

namespace {

std::mutex g_mutex;
std::multiset<std::string> g_open;

bool isFromNet(const std::string &uri)
{
    return !gst_uri_has_protocol(uri.c_str(), "file") && !gst_uri_has_protocol(uri.c_str(), LibavProtocol);
}

bool reachesNet(GstElementFactory *source)
{
    constexpr std::array<std::string_view, 6> Beginnings{"http", "rtsp", "rtmp", "mms", "udp", "ftp"};
    const gchar *const *protocols = gst_element_factory_get_uri_protocols(source);
    return protocols && !g_strv_contains(protocols, "file")
           && std::ranges::any_of(Beginnings, [protocols](std::string_view beginning) {
                  return std::string_view(*protocols).starts_with(beginning);
              });
}

/** Other sources of what this machine has, such as devices and descriptors, are never asked for by a URI. */
void removeOtherSources()
{
    GList *features = gst_registry_get_feature_list(gst_registry_get(), GST_TYPE_ELEMENT_FACTORY);
    for (GList *entry = features; entry; entry = entry->next) {
        auto *factory = static_cast<GstElementFactory *>(entry->data);
        const std::string_view name = GST_OBJECT_NAME(factory);
        const bool isSource = gst_element_factory_get_uri_type(factory) == GST_URI_SRC;
        if (isSource && name != FileSourceElement && name != LibavElement && name != "appsrc" && !reachesNet(factory)) {
            gst_registry_remove_feature(gst_registry_get(), GST_PLUGIN_FEATURE(factory));
        }
    }
    gst_plugin_feature_list_free(features);
}

} // namespace

void OpenMedia::add(const std::string &uri)
{
    static std::once_flag once;
    if (isFromNet(uri)) {
        std::call_once(once, removeOtherSources);
    }
    const std::lock_guard lock(g_mutex);
    m_uris.push_back(uri);
    g_open.insert(uri);
}

bool OpenMedia::mayBeOpened(const std::string &uri)
{
    const std::lock_guard lock(g_mutex);
    return g_open.contains(uri) || std::ranges::none_of(g_open, isFromNet);
}

bool OpenMedia::contains(const char *uri)
{
    const std::lock_guard lock(g_mutex);
    return g_open.contains(uri);
}

void OpenMedia::clear()
{
    const std::lock_guard lock(g_mutex);
    for (const std::string &uri : m_uris) {
        g_open.erase(g_open.find(uri));
    }
    m_uris.clear();
}

} // namespace voro::renderer
