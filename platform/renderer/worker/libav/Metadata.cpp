#include "Metadata.h"

#include <gst/tag/tag.h>

#include <array>
#include <cstdlib>
#include <string>

namespace voro::renderer {

namespace {

struct Known {
    const char *key;
    const char *tag;
};

constexpr std::array Texts{
    Known{"title", GST_TAG_TITLE},       Known{"artist", GST_TAG_ARTIST},
    Known{"author", GST_TAG_ARTIST},     Known{"album", GST_TAG_ALBUM},
    Known{"genre", GST_TAG_GENRE},       Known{"comment", GST_TAG_COMMENT},
    Known{"composer", GST_TAG_COMPOSER}, Known{"album_artist", GST_TAG_ALBUM_ARTIST},
};
constexpr std::array Numbers{Known{"track", GST_TAG_TRACK_NUMBER}, Known{"disc", GST_TAG_ALBUM_VOLUME_NUMBER}};

/** In UTF-8, whatever the file is written in. */
Owned<char> toText(const char *value)
{
    return Owned<char>(g_utf8_validate(value, -1, nullptr)
                           ? g_strdup(value)
                           : g_convert(value, -1, "UTF-8", "WINDOWS-1252", nullptr, nullptr, nullptr));
}

void add(GstTagList *tags, const AVDictionary *metadata)
{
    for (const Known &known : Texts) {
        const AVDictionaryEntry *entry = av_dict_get(metadata, known.key, nullptr, 0);
        const Owned<char> text(entry ? toText(entry->value) : nullptr);
        if (text && *text) {
            gst_tag_list_add(tags, GST_TAG_MERGE_KEEP, known.tag, text.get(), nullptr);
        }
    }
    for (const Known &known : Numbers) {
        const AVDictionaryEntry *entry = av_dict_get(metadata, known.key, nullptr, 0);
        if (const long number = entry ? std::strtol(entry->value, nullptr, 10) : 0; number > 0) {
            gst_tag_list_add(tags, GST_TAG_MERGE_KEEP, known.tag, static_cast<guint>(number), nullptr);
        }
    }
}

/** An AIFF file may have several ID3 tags, with several artists each; libavformat reports one. */
void addId3Chunks(GstTagList *tags, const LocalFile &file)
{
    constexpr size_t HeadSize = 8;
    constexpr int64_t FileHead = 12;
    constexpr guint32 Largest = 16 << 20;
    int64_t place = FileHead;
    for (std::string head = file.at(place, HeadSize); head.size() == HeadSize; head = file.at(place, HeadSize)) {
        const guint32 size = GST_READ_UINT32_BE(head.data() + 4);
        if (head.starts_with("ID3 ") && size <= Largest) {
            const std::string chunk = file.at(place + static_cast<int64_t>(HeadSize), size);
            const Owned<GstBuffer> buffer(gst_buffer_new_memdup(chunk.data(), chunk.size()));
            const Owned<GstTagList> found(gst_tag_list_from_id3v2_tag(buffer.get()));
            if (found) {
                gst_tag_list_insert(tags, found.get(), GST_TAG_MERGE_KEEP);
            }
        }
        place += static_cast<int64_t>(HeadSize) + size + size % 2;
    }
}

} // namespace

Owned<GstTagList> tagsOf(const AVFormatContext &context, const LocalFile &file)
{
    Owned<GstTagList> tags(gst_tag_list_new(GST_TAG_CONTAINER_FORMAT, context.iformat->long_name, nullptr));
    gst_tag_list_set_scope(tags.get(), GST_TAG_SCOPE_GLOBAL);
    if (g_str_equal(context.iformat->name, "aiff")) {
        addId3Chunks(tags.get(), file);
    }
    add(tags.get(), context.metadata);
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        const AVStream &stream = *context.streams[i];
        if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0 && stream.attached_pic.size > 0) {
            gst_tag_list_add_id3_image(tags.get(), stream.attached_pic.data,
                                       static_cast<guint>(stream.attached_pic.size), 0);
        } else if (stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            add(tags.get(), stream.metadata);
        }
    }
    if (context.bit_rate > 0 && context.bit_rate < G_MAXINT) {
        gst_tag_list_add(tags.get(), GST_TAG_MERGE_KEEP, GST_TAG_BITRATE, static_cast<guint>(context.bit_rate),
                         nullptr);
    }
    return tags;
}

} // namespace voro::renderer
