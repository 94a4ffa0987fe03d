#include "AudioSource.h"

#include "WavHeader.h"

#include <pulse/pulseaudio.h>
#include <renderer/worker/video/WindowSink.h>

#include <memory>

namespace voro::renderer {

namespace {

struct Close {
    void operator()(pa_mainloop *loop) const { pa_mainloop_free(loop); }
    void operator()(pa_context *context) const
    {
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
    void operator()(pa_operation *operation) const { pa_operation_unref(operation); }
};

/** The format of the sound server's default source; nothing without a server or a source. */
SampleSpec serverSpec()
{
    SampleSpec spec;
    const std::unique_ptr<pa_mainloop, Close> loop(pa_mainloop_new());
    const std::unique_ptr<pa_context, Close> context(pa_context_new(pa_mainloop_get_api(loop.get()), "voro-renderer"));
    pa_context_connect(context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    while (PA_CONTEXT_IS_GOOD(pa_context_get_state(context.get()))
           && pa_context_get_state(context.get()) != PA_CONTEXT_READY) {
        pa_mainloop_iterate(loop.get(), 1, nullptr);
    }
    if (pa_context_get_state(context.get()) != PA_CONTEXT_READY) {
        return spec;
    }
    const auto take = [](pa_context *, const pa_source_info *info, int isLast, void *result) {
        if (isLast == 0) {
            *static_cast<SampleSpec *>(result) = {static_cast<int>(info->sample_spec.rate), info->sample_spec.channels};
        }
    };
    const std::unique_ptr<pa_operation, Close> operation(
        pa_context_get_source_info_by_name(context.get(), "@DEFAULT_SOURCE@", take, &spec));
    while (operation && pa_operation_get_state(operation.get()) == PA_OPERATION_RUNNING) {
        pa_mainloop_iterate(loop.get(), 1, nullptr);
    }
    return spec;
}

GstElement *serverSource(const std::string &role)
{
    const SampleSpec spec = serverSpec();
    GstElement *source = spec.rate > 0 ? gst_element_factory_make("pulsesrc", nullptr) : nullptr;
    if (!source) {
        return nullptr;
    }
    if (!role.empty()) {
        GstStructure *properties = gst_structure_new("properties", "media.role", G_TYPE_STRING, role.c_str(), nullptr);
        g_object_set(source, "stream-properties", properties, nullptr);
        gst_structure_free(properties);
    }
    GstElement *filter = makeElement("capsfilter");
    const Owned<GstCaps> caps(gst_caps_new_simple("audio/x-raw", "rate", G_TYPE_INT, spec.rate, "channels", G_TYPE_INT,
                                                  spec.channels, nullptr));
    g_object_set(filter, "caps", caps.get(), nullptr);
    GstElement *bin = gst_bin_new(nullptr);
    gst_bin_add_many(GST_BIN(bin), source, filter, nullptr);
    gst_element_link(source, filter);
    const Owned<GstPad> pad(gst_element_get_static_pad(filter, "src"));
    gst_element_add_pad(bin, gst_ghost_pad_new("src", pad.get()));
    return bin;
}

} // namespace

GstElement *makeAudioSource(const std::string &role)
{
    GstElement *source = configuredBin("VORO_AUDIO_SOURCE");
    return source ? source : serverSource(role);
}

} // namespace voro::renderer
