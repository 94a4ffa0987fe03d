#include "FileSource.h"

#include "Gst.h"

#include <gst/base/gstbasesrc.h>
#include <renderer/common/OpenLocal.h>

#include <cerrno>
#include <cstring>
#include <mutex>
#include <span>
#include <utility>

namespace {

using voro::renderer::LocalFile;
using voro::renderer::Owned;

/** The file while it is read; who asks for its length may come at any time. */
class OpenFile {
public:
    void set(LocalFile::Shared file)
    {
        const std::lock_guard lock(m_mutex);
        m_file = std::move(file);
    }
    LocalFile::Shared get() const
    {
        const std::lock_guard lock(m_mutex);
        return m_file;
    }

private:
    mutable std::mutex m_mutex;
    LocalFile::Shared m_file;
};

struct FileSource {
    GstBaseSrc parent;
    std::string *path;
    OpenFile *file;
};

struct FileSourceClass {
    GstBaseSrcClass parent;
};

FileSource *sourceOf(void *instance)
{
    return static_cast<FileSource *>(instance);
}

bool (*g_mayOpen)(const std::string &uri);

gchar *uriOf(GstURIHandler *handler)
{
    const std::string &path = *sourceOf(handler)->path;
    return path.empty() ? nullptr : g_filename_to_uri(path.c_str(), nullptr, nullptr);
}

gboolean setUri(GstURIHandler *handler, const gchar *uri, GError **error)
{
    const Owned<char> path(g_filename_from_uri(uri, nullptr, nullptr));
    if (!path) {
        g_set_error_literal(error, GST_URI_ERROR, GST_URI_ERROR_BAD_URI, "the URI names no file");
        return FALSE;
    }
    if (!g_mayOpen(uri)) {
        g_set_error_literal(error, GST_URI_ERROR, GST_URI_ERROR_BAD_REFERENCE, "a medium from the net names a file");
        return FALSE;
    }
    *sourceOf(handler)->path = path.get();
    return TRUE;
}

gboolean refuseUri(GstURIHandler *, const gchar *, GError **error)
{
    g_set_error_literal(error, GST_URI_ERROR, GST_URI_ERROR_BAD_REFERENCE, "files are opened by another element");
    return FALSE;
}

const gchar *const *protocols(GType)
{
    static const gchar *const Protocols[] = {"file", nullptr};
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

G_DEFINE_TYPE_WITH_CODE(FileSource, file_source, GST_TYPE_BASE_SRC,
                        G_IMPLEMENT_INTERFACE(GST_TYPE_URI_HANDLER, initHandler))

gboolean start(GstBaseSrc *base)
{
    FileSource *source = sourceOf(base);
    LocalFile::Shared file = voro::renderer::openLocal(*source->path);
    if (!file->isOpen()) {
        const int number = file->error();
        const GstResourceError code = number == ENOENT ? GST_RESOURCE_ERROR_NOT_FOUND : GST_RESOURCE_ERROR_OPEN_READ;
        gst_element_message_full(GST_ELEMENT(source), GST_MESSAGE_ERROR, GST_RESOURCE_ERROR, code,
                                 g_strdup_printf("%s: %s", source->path->c_str(), std::strerror(number)), nullptr,
                                 __FILE__, "start", __LINE__);
        return FALSE;
    }
    source->file->set(std::move(file));
    // It may grow while it plays.
    gst_base_src_set_dynamic_size(base, TRUE);
    return TRUE;
}

gboolean stop(GstBaseSrc *base)
{
    sourceOf(base)->file->set(nullptr);
    return TRUE;
}

gboolean isSeekable(GstBaseSrc *)
{
    return TRUE;
}

gboolean getSize(GstBaseSrc *base, guint64 *size)
{
    const LocalFile::Shared file = sourceOf(base)->file->get();
    *size = file ? static_cast<guint64>(file->size()) : 0;
    return static_cast<gboolean>(file != nullptr);
}

// Runs in a streaming thread.
GstFlowReturn fill(GstBaseSrc *base, guint64 place, guint length, GstBuffer *buffer)
{
    const LocalFile::Shared file = sourceOf(base)->file->get();
    GstMapInfo map;
    if (!file || !gst_buffer_map(buffer, &map, GST_MAP_WRITE)) {
        return GST_FLOW_ERROR;
    }
    const ssize_t size = file->read(static_cast<int64_t>(place), std::as_writable_bytes(std::span(map.data, length)));
    const int number = errno;
    gst_buffer_unmap(buffer, &map);
    if (size < 0) {
        gst_element_message_full(GST_ELEMENT(base), GST_MESSAGE_ERROR, GST_RESOURCE_ERROR, GST_RESOURCE_ERROR_READ,
                                 g_strdup(std::strerror(number)), nullptr, __FILE__, "fill", __LINE__);
        return GST_FLOW_ERROR;
    }
    const auto count = static_cast<gssize>(size);
    gst_buffer_resize(buffer, 0, count);
    GST_BUFFER_OFFSET(buffer) = place;
    GST_BUFFER_OFFSET_END(buffer) = place + static_cast<guint64>(count);
    return size > 0 ? GST_FLOW_OK : GST_FLOW_EOS;
}

void finalize(GObject *object)
{
    delete sourceOf(object)->path;
    delete sourceOf(object)->file;
    G_OBJECT_CLASS(file_source_parent_class)->finalize(object);
}

void file_source_class_init(FileSourceClass *type)
{
    G_OBJECT_CLASS(type)->finalize = finalize;
    GstBaseSrcClass *base = GST_BASE_SRC_CLASS(type);
    base->start = start;
    base->stop = stop;
    base->is_seekable = isSeekable;
    base->get_size = getSize;
    base->fill = fill;
    static GstStaticPadTemplate output =
        GST_STATIC_PAD_TEMPLATE("src", GST_PAD_SRC, GST_PAD_ALWAYS, GST_STATIC_CAPS_ANY);
    gst_element_class_add_static_pad_template(GST_ELEMENT_CLASS(type), &output);
    gst_element_class_set_static_metadata(GST_ELEMENT_CLASS(type), "File source", "Source/File",
                                          "Reads files that others may open for it", "libvoromultimedia");
}

void file_source_init(FileSource *source)
{
    source->path = new std::string;
    source->file = new OpenFile;
    gst_base_src_set_blocksize(GST_BASE_SRC(source), 4096);
}

} // namespace

namespace voro::renderer {

bool registerFileSource(bool (*mayOpen)(const std::string &uri))
{
    g_mayOpen = mayOpen;
    const Owned<GstElement> other(GST_ELEMENT(gst_object_ref_sink(makeElement("filesrc"))));
    // The class's own table: whoever makes a source of a URI, in whichever plugin, comes by here.
    GST_URI_HANDLER_GET_INTERFACE(other.get())->set_uri = refuseUri;
    return gst_element_register(nullptr, FileSourceElement, GST_RANK_PRIMARY + 1, file_source_get_type());
}

void setFilePath(GstElement *source, const std::string &path)
{
    *sourceOf(source)->path = path;
}

} // namespace voro::renderer
