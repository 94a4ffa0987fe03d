#pragma once

#include <gst/gst.h>

#include <cstdint>
#include <memory>
#include <string>

/* Ownership of what GStreamer and GLib hand out. */

namespace voro::renderer {

struct Unref {
    void operator()(GstElement *element) const { gst_object_unref(element); }
    void operator()(GstPad *pad) const { gst_object_unref(pad); }
    void operator()(GstBus *bus) const { gst_object_unref(bus); }
    void operator()(GstPluginFeature *feature) const { gst_object_unref(feature); }
    void operator()(GstPlugin *plugin) const { gst_object_unref(plugin); }
    void operator()(GstEvent *event) const { gst_event_unref(event); }
    void operator()(GstMessage *message) const { gst_message_unref(message); }
    void operator()(GstTagList *tags) const { gst_tag_list_unref(tags); }
    void operator()(GstBuffer *buffer) const { gst_buffer_unref(buffer); }
    void operator()(GstSample *sample) const { gst_sample_unref(sample); }
    void operator()(GstCaps *caps) const { gst_caps_unref(caps); }
    void operator()(GstQuery *query) const { gst_query_unref(query); }
    void operator()(GError *error) const { g_error_free(error); }
    void operator()(char *text) const { g_free(text); }
};

template<typename Type>
using Owned = std::unique_ptr<Type, Unref>;

/** A timer or watch of the main loop that ends with its owner. */
class MainLoopSource {
public:
    MainLoopSource() = default;
    explicit MainLoopSource(guint id) : m_id(id) {}
    ~MainLoopSource() { reset(); }
    MainLoopSource(const MainLoopSource &) = delete;
    MainLoopSource &operator=(const MainLoopSource &) = delete;

    bool isActive() const { return m_id != 0; }
    void reset(guint id = 0)
    {
        if (m_id != 0) {
            g_source_remove(m_id);
        }
        m_id = id;
    }
    /** Its callback ended it. */
    void forget() { m_id = 0; }

private:
    guint m_id = 0;
};

/** The duration of an element's medium in milliseconds, 0 when not known. */
int64_t durationOf(GstElement *element);
bool isSeekable(GstElement *element);
/** The URI of an element that decodes one. */
std::string uriOf(GstElement *decoder);
/** The rate of raw or encoded sound in Hz, 0 for other caps. */
int sampleRateOf(const GstCaps *caps);

/** Whether an element is of a type, as "playbin" is one. */
bool isOfType(GstElement *element, const char *type);

/** Posts an element message that has a name and nothing else. */
void postNote(GstElement *element, const char *name);

/** An element of a type that the installation has to have; ends the worker without it. */
GstElement *makeElement(const char *type);

} // namespace voro::renderer
