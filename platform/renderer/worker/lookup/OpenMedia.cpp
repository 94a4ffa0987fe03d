#include "OpenMedia.h"

#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/libav/Module.h>

#include <algorithm>
#include <array>
#include <mutex>
#include <set>
#include <string_view>
#include <utility>

namespace voro::renderer {

namespace {

constexpr char FileSource[] = "filesrc";

std::mutex g_mutex;
std::multiset<std::string> g_open;

bool isFromNet(const std::string &uri)
{
    return !gst_uri_has_protocol(uri.c_str(), "file") && !gst_uri_has_protocol(uri.c_str(), LibavProtocol);
}

bool mayBeOpened(const std::string &uri)
{
    const std::lock_guard lock(g_mutex);
    return g_open.contains(uri) || std::ranges::none_of(g_open, isFromNet);
}

decltype(GstURIHandlerInterface::set_uri) g_setFileUri;

gboolean setFileUri(GstURIHandler *source, const gchar *uri, GError **error)
{
    if (mayBeOpened(uri)) {
        return g_setFileUri(source, uri, error);
    }
    g_set_error_literal(error, GST_URI_ERROR, GST_URI_ERROR_BAD_REFERENCE, "a medium from the net names a file");
    return FALSE;
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
        if (isSource && name != FileSource && name != LibavElement && name != "appsrc" && !reachesNet(factory)) {
            gst_registry_remove_feature(gst_registry_get(), GST_PLUGIN_FEATURE(factory));
        }
    }
    gst_plugin_feature_list_free(features);
}

void guardFiles()
{
    removeOtherSources();
    const Owned<GstElement> source(GST_ELEMENT(gst_object_ref_sink(makeElement(FileSource))));
    // The class's own table: whoever makes a source of a URI, in whichever plugin, comes by here.
    GstURIHandlerInterface *interface = GST_URI_HANDLER_GET_INTERFACE(source.get());
    g_setFileUri = std::exchange(interface->set_uri, setFileUri);
}

} // namespace

void OpenMedia::add(const std::string &uri)
{
    static std::once_flag once;
    if (isFromNet(uri)) {
        std::call_once(once, guardFiles);
    }
    const std::lock_guard lock(g_mutex);
    m_uris.push_back(uri);
    g_open.insert(uri);
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
