#include "Setup.h"

#include <malloc.h>
#include <orc/orc.h>
#include <renderer/worker/gst/FileSource.h>
#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/lookup/OpenMedia.h>

#include <atomic>
#include <cstdio>

namespace voro::renderer {

namespace {

/** In use order: what reads, what decodes, what plays. */
constexpr const char *Common[] = {
    "playbin",        "uridecodebin",   "decodebin",     "typefind",           "wavparse",          "oggdemux",
    "vorbisdec",      "opusdec",        "opusparse",     "flacparse",          "flacdec",           "id3demux",
    "mpegaudioparse", "mpg123audiodec", "qtdemux",       "aacparse",           "matroskademux",     "queue",
    "multiqueue",     "audioconvert",   "audioresample", "scaletempo",         "equalizer-10bands", "volume",
    "pulsesink",      "fakesink",       "inputselector", "streamsynchronizer", "videoconvert",      "videoscale",
    "videocrop",
};

std::string cacheFolder()
{
    const Owned<char> folder(g_build_filename(g_get_user_cache_dir(), "voro", nullptr));
    g_mkdir_with_parents(folder.get(), 0700);
    return folder.get();
}

/**
 * A large library decodes what the small ones do not, and is loaded only then: its decoders come last, and it does not
 * help to find out what a medium is, for which it would be loaded every time.
 */
void rankLast(const char *plugin)
{
    GstRegistry *registry = gst_registry_get();
    GList *features = gst_registry_get_feature_list_by_plugin(registry, plugin);
    for (GList *entry = features; entry; entry = entry->next) {
        auto *feature = static_cast<GstPluginFeature *>(entry->data);
        if (GST_IS_TYPE_FIND_FACTORY(feature)) {
            gst_registry_remove_feature(registry, feature);
        } else if (gst_plugin_feature_get_rank(feature) > GST_RANK_MARGINAL) {
            gst_plugin_feature_set_rank(feature, GST_RANK_MARGINAL);
        }
    }
    gst_plugin_feature_list_free(features);
}

/** The first writes beyond its memory where pictures have more than 8 bits, the others never end. */
constexpr const char *Faulty[] = {"libde265dec", "avdemux_gif", "avdemux_nut"};

/** Among equals the name would decide. */
void rank(const char *decoder, GstRank rank)
{
    const Owned<GstPluginFeature> feature(gst_registry_lookup_feature(gst_registry_get(), decoder));
    if (feature) {
        gst_plugin_feature_set_rank(feature.get(), rank);
    }
}

/** A library may complain about a broken medium without end. */
void logFewComplaints(const gchar *domain, GLogLevelFlags level, const gchar *message, gpointer)
{
    constexpr int MostComplaints = 100;
    static std::atomic<int> count = 0;
    if ((level & (G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING)) == 0) {
        g_log_default_handler(domain, level, message, nullptr);
    } else if (count <= MostComplaints) {
        const int number = ++count;
        if (number <= MostComplaints) {
            g_log_default_handler(domain, level, message, nullptr);
        } else if (number == MostComplaints + 1) {
            std::fputs("voro-renderer: further complaints of libraries are not shown\n", stderr);
        }
    }
}

} // namespace

void startGStreamer()
{
    g_log_set_default_handler(logFewComplaints, nullptr);
    // Otherwise GIO writes files and calls the session bus for the settings of the desktop. A worker may do neither.
    setenv("GSETTINGS_BACKEND", "memory", 1);
    setenv("GIO_USE_VFS", "local", 1);
    setenv("GST_REGISTRY", (cacheFolder() + "/gstreamer-registry.bin").c_str(), 0);
    gst_init(nullptr, nullptr);
    gst_registry_fork_set_enabled(FALSE);
}

void warmUpForFilms()
{
    const Owned<GstPlugin> decoders(gst_plugin_load_by_name("libav"));
    mergeFreeMemory();
}

void mergeFreeMemory()
{
    malloc_trim(0);
}

void warmUp()
{
    if (!registerFileSource(OpenMedia::mayBeOpened)) {
        std::fputs("voro-renderer: files cannot be read\n", stderr);
    }
    rankLast("libav");
    rank("mpg123audiodec", GST_RANK_PRIMARY);
    for (const char *element : Faulty) {
        rank(element, GST_RANK_NONE);
    }
    // Otherwise with the first sound, for half a millisecond.
    orc_init();
    for (const char *name : Common) {
        const Owned<GstPluginFeature> feature(gst_registry_lookup_feature(gst_registry_get(), name));
        const Owned<GstPluginFeature> loaded(feature ? gst_plugin_feature_load(feature.get()) : nullptr);
        if (loaded) {
            // What all elements of a type share is made now, and stands in memory once.
            g_type_class_ref(gst_element_factory_get_element_type(GST_ELEMENT_FACTORY(loaded.get())));
        }
    }
    mergeFreeMemory();
}

} // namespace voro::renderer
