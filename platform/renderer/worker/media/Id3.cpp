#include "Id3.h"

#include <gst/tag/tag.h>
#include <renderer/common/OpenLocal.h>

namespace voro::renderer {

namespace {

Owned<GstBuffer> toBuffer(const std::string &bytes)
{
    return Owned<GstBuffer>(gst_buffer_new_memdup(bytes.data(), bytes.size()));
}

} // namespace

Owned<GstTagList> id3Tags(const std::string &path)
{
    constexpr guint Largest = 16 << 20;
    constexpr size_t OldSize = 128;
    const LocalFile::Shared file = openLocal(path);
    Owned<GstTagList> tags;
    const std::string head = file->at(0, GST_TAG_ID3V2_HEADER_SIZE);
    const guint size = head.size() == GST_TAG_ID3V2_HEADER_SIZE ? gst_tag_get_id3v2_tag_size(toBuffer(head).get()) : 0;
    if (size > 0 && size <= Largest) {
        tags.reset(gst_tag_list_from_id3v2_tag(toBuffer(file->at(0, size)).get()));
    }
    const std::string tail = file->lastBytes(OldSize);
    if (tail.size() == OldSize) {
        const Owned<GstTagList> old(gst_tag_list_new_from_id3v1(reinterpret_cast<const guint8 *>(tail.data())));
        if (old) {
            tags.reset(gst_tag_list_merge(tags.get(), old.get(), GST_TAG_MERGE_KEEP));
        }
    }
    if (tags) {
        tags.reset(gst_tag_list_make_writable(tags.release()));
        gst_tag_list_add(tags.get(), GST_TAG_MERGE_REPLACE, GST_TAG_CONTAINER_FORMAT, "ID3 tag", nullptr);
    }
    return tags;
}

} // namespace voro::renderer
