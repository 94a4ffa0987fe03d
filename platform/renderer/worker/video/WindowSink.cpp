#include "WindowSink.h"

#include "FrameSink.h"

#include <dlfcn.h>
#include <gst/video/videooverlay.h>
#include <pps/Fd.h>
#include <pps/Log.h>
#include <renderer/common/MemoryFile.h>
#include <renderer/common/OpenLocal.h>
#include <renderer/common/Window.h>

#include <cstdlib>
#include <string>

namespace voro::renderer {

namespace {

/** A window that the application has destroyed is no reason to end. */
void ignoreWindowErrors()
{
    using Handler = int (*)(void *display, void *event);
    using SetHandler = Handler (*)(Handler);
    // The library came with the sink.
    if (const auto set = reinterpret_cast<SetHandler>(dlsym(RTLD_DEFAULT, "XSetErrorHandler"))) {
        set([](void *, void *) { return 0; });
    } else if (void *library = dlopen("libX11.so.6", RTLD_NOW | RTLD_NOLOAD)) {
        reinterpret_cast<SetHandler>(dlsym(library, "XSetErrorHandler"))([](void *, void *) { return 0; });
    }
}

/** The first of the sinks that the X server can do. */
GstElement *drawingSink()
{
    for (const char *type : {"xvimagesink", "ximagesink"}) {
        GstElement *sink = gst_element_factory_make(type, nullptr);
        if (sink && gst_element_set_state(sink, GST_STATE_READY) != GST_STATE_CHANGE_FAILURE) {
            return sink;
        }
        if (sink) {
            gst_element_set_state(sink, GST_STATE_NULL);
            gst_object_unref(gst_object_ref_sink(sink));
        }
    }
    return nullptr;
}

/** Where the client library of the X server finds what a file holds, which only others may open for this process. */
std::string keyCopy(const std::string &path)
{
    constexpr size_t Largest = 1 << 20;
    static pps::Fd copy;
    const std::string content = openLocal(path)->at(0, Largest);
    copy = makeMemoryFile(std::string_view(content));
    return copy.isValid() ? nameOf(copy) : path;
}

} // namespace

GstElement *configuredBin(const char *variable)
{
    const char *description = std::getenv(variable);
    if (!description || !*description) {
        return nullptr;
    }
    GError *raw = nullptr;
    GstElement *sink = gst_parse_bin_from_description(description, TRUE, &raw);
    const Owned<GError> error(raw);
    if (error) {
        log::warn(log::Category::Worker, "%s: %s", variable, error->message);
    }
    return sink;
}

bool useDisplay(const std::string &display, const std::string &authority)
{
    static std::string usable;
    if (display == usable && !display.empty()) {
        return true;
    }
    setenv("DISPLAY", display.c_str(), 1);
    if (authority.empty()) {
        unsetenv("XAUTHORITY");
    } else {
        setenv("XAUTHORITY", keyCopy(authority).c_str(), 1);
    }
    GstElement *sink = drawingSink();
    if (!sink) {
        return false;
    }
    gst_element_set_state(sink, GST_STATE_NULL);
    gst_object_unref(gst_object_ref_sink(sink));
    usable = display;
    return true;
}

GstElement *silentSink()
{
    GstElement *sink = makeElement("fakesink");
    g_object_set(sink, "sync", TRUE, nullptr);
    return sink;
}

GstElement *screenSink(const Window &window)
{
    if (window.frames) {
        return frameSink(window.frames);
    }
    const auto number = windowNumber(window.name);
    if (!number) {
        return nullptr;
    }
    GstElement *sink = drawingSink();
    if (!sink) {
        log::warn(log::Category::Worker, "there is no X server to draw with");
        return nullptr;
    }
    ignoreWindowErrors();
    g_object_set(sink, "handle-events", FALSE, nullptr);
    gst_video_overlay_set_window_handle(GST_VIDEO_OVERLAY(sink), *number);
    return sink;
}

} // namespace voro::renderer
