#include "Container.h"
#include "Module.h"
#include "Reader.h"

#include <algorithm>
#include <string>

namespace {

using voro::renderer::Container;
using voro::renderer::LocalFile;
using voro::renderer::Owned;
using voro::renderer::Reader;

struct LibavSource {
    GstElement parent;
    Reader *reader;
    std::string *uri;
};

struct LibavSourceClass {
    GstElementClass parent;
};

LibavSource *sourceOf(void *instance)
{
    return static_cast<LibavSource *>(instance);
}

gchar *uriOf(GstURIHandler *handler)
{
    return g_strdup(sourceOf(handler)->uri->c_str());
}

voro::renderer::LibavHost g_host;

gboolean setUri(GstURIHandler *handler, const gchar *uri, GError **error)
{
    if (!g_host.mayOpen(uri)) {
        g_set_error_literal(error, GST_URI_ERROR, GST_URI_ERROR_BAD_REFERENCE, "a medium names a file");
        return FALSE;
    }
    *sourceOf(handler)->uri = uri;
    return TRUE;
}

const gchar *const *protocols(GType)
{
    static const gchar *const Protocols[] = {voro::renderer::LibavProtocol, nullptr};
    return Protocols;
}

void initHandler(gpointer type, gpointer)
{
    auto *handler = static_cast<GstURIHandlerInterface *>(type);
    handler->get_type = [](GType) { return GST_URI_SRC; };
    handler->get_protocols = protocols;
    handler->get_uri = uriOf;
    handler->set_uri = setUri;
}

G_DEFINE_TYPE_WITH_CODE(LibavSource, libav_source, GST_TYPE_ELEMENT,
                        G_IMPLEMENT_INTERFACE(GST_TYPE_URI_HANDLER, initHandler))

/** The file that a URI stands for, empty when it stands for none. */
std::string pathOf(const std::string &uri)
{
    const std::string file = "file" + uri.substr(std::min(uri.size(), sizeof voro::renderer::LibavProtocol - 1));
    const Owned<char> path(g_filename_from_uri(file.c_str(), nullptr, nullptr));
    return path ? path.get() : "";
}

GstStateChangeReturn changeState(GstElement *element, GstStateChange change)
{
    LibavSource *source = sourceOf(element);
    if (change == GST_STATE_CHANGE_READY_TO_PAUSED) {
        source->reader->start(pathOf(*source->uri), g_host.open);
    }
    const GstStateChangeReturn result = GST_ELEMENT_CLASS(libav_source_parent_class)->change_state(element, change);
    if (change == GST_STATE_CHANGE_PAUSED_TO_READY) {
        source->reader->stop();
    }
    return result;
}

void finalize(GObject *object)
{
    delete sourceOf(object)->reader;
    delete sourceOf(object)->uri;
    G_OBJECT_CLASS(libav_source_parent_class)->finalize(object);
}

void libav_source_class_init(LibavSourceClass *type)
{
    G_OBJECT_CLASS(type)->finalize = finalize;
    GST_ELEMENT_CLASS(type)->change_state = changeState;
    static GstStaticPadTemplate audio =
        GST_STATIC_PAD_TEMPLATE("audio", GST_PAD_SRC, GST_PAD_SOMETIMES, GST_STATIC_CAPS("audio/x-raw"));
    static GstStaticPadTemplate video =
        GST_STATIC_PAD_TEMPLATE("video", GST_PAD_SRC, GST_PAD_SOMETIMES, GST_STATIC_CAPS("video/x-raw"));
    gst_element_class_add_static_pad_template(GST_ELEMENT_CLASS(type), &audio);
    gst_element_class_add_static_pad_template(GST_ELEMENT_CLASS(type), &video);
    gst_element_class_set_static_metadata(GST_ELEMENT_CLASS(type), "libavformat source", "Source/Demuxer/Decoder",
                                          "Reads and decodes what libavformat knows", "libvoromultimedia");
}

void libav_source_init(LibavSource *source)
{
    source->reader = new Reader(GST_ELEMENT(source));
    source->uri = new std::string;
    GST_OBJECT_FLAG_SET(source, GST_ELEMENT_FLAG_SOURCE);
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) bool voroRegisterLibav(const voro::renderer::LibavHost &host)
{
    g_host = host;
    return gst_element_register(nullptr, voro::renderer::LibavElement, GST_RANK_PRIMARY, libav_source_get_type());
}

__attribute__((visibility("default"))) int64_t voroMeasureWithLibav(const char *path, const LocalFile::Shared &file)
{
    constexpr int64_t Millisecond = 1000;
    Container container;
    if (!container.open(path, file)) {
        return 0;
    }
    const bool hasSound = container.select(AVMEDIA_TYPE_AUDIO);
    const bool hasPictures = container.select(AVMEDIA_TYPE_VIDEO);
    if (!hasSound && !hasPictures) {
        return 0;
    }
    const int64_t known = container.duration();
    return (known > 0 ? known : container.measure()) / Millisecond;
}

} // extern "C"
