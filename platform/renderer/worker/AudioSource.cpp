#include "AudioSource.h"

#include "WindowSink.h"

namespace voro::renderer {

GstElement *makeAudioSource(const std::string &role)
{
    if (GstElement *source = configuredBin("VORO_AUDIO_SOURCE")) {
        return source;
    }
    GstElement *source = gst_element_factory_make("pulsesrc", nullptr);
    if (source && !role.empty()) {
        GstStructure *properties = gst_structure_new("properties", "media.role", G_TYPE_STRING, role.c_str(), nullptr);
        g_object_set(source, "stream-properties", properties, nullptr);
        gst_structure_free(properties);
    }
    return source;
}

} // namespace voro::renderer
