#include "Tags.h"

#include <pps/Text.h>
#include <renderer/common/Protocol.h>

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace voro::renderer {

namespace {

struct Known {
    const char *tag;
    const char *attribute;
};

constexpr std::array KnownTags{
    Known{GST_TAG_TITLE, "md_title_name"},         Known{GST_TAG_ARTIST, "md_title_artist"},
    Known{GST_TAG_ALBUM, "md_title_album"},        Known{GST_TAG_GENRE, "md_title_genre"},
    Known{GST_TAG_TRACK_NUMBER, "md_title_track"}, Known{GST_TAG_ALBUM_VOLUME_NUMBER, "md_title_disc"},
    Known{GST_TAG_COMMENT, "md_title_comment"},    Known{GST_TAG_DESCRIPTION, "md_title_comment"},
    Known{GST_TAG_BITRATE, "md_title_bitrate"},    Known{GST_TAG_NOMINAL_BITRATE, "md_title_bitrate"},
};

constexpr size_t MaximumTags = 12 * 1024;
/** A picture's text leaves room for all the rest. */
constexpr size_t MaximumPictureText = MaximumMetadata - MaximumTags - 4 * 1024;

/** Whether a tag changes from frame to frame, and so describes no medium. */
constexpr std::array Unsteady{GST_TAG_MINIMUM_BITRATE, GST_TAG_MAXIMUM_BITRATE, "channel-mode", "has-crc"};

bool isUnsteady(const char *tag)
{
    return std::any_of(Unsteady.begin(), Unsteady.end(), [&](const char *name) { return g_str_equal(name, tag); });
}

/** The attribute that a tag becomes; "bitrate" is what is, "nominal-bitrate" only what was wanted. */
std::string attributeOf(const char *tag)
{
    const auto known = std::find_if(KnownTags.begin(), KnownTags.end(),
                                    [&](const Known &entry) { return g_str_equal(entry.tag, tag); });
    return known == KnownTags.end() ? tag : known->attribute;
}

bool isLessThanKnown(const char *tag)
{
    return g_str_equal(tag, GST_TAG_DESCRIPTION) || g_str_equal(tag, GST_TAG_NOMINAL_BITRATE);
}

/** A picture as a data URL, empty for one that is too large or of an unknown type. */
std::string dataUrl(GstSample *picture)
{
    const GstCaps *caps = gst_sample_get_caps(picture);
    GstBuffer *buffer = gst_sample_get_buffer(picture);
    if (!caps || gst_caps_get_size(caps) == 0 || !buffer || gst_buffer_get_size(buffer) > MaximumPicture) {
        return {};
    }
    const std::string type = gst_structure_get_name(gst_caps_get_structure(caps, 0));
    gpointer data = nullptr;
    gsize size = 0;
    gst_buffer_extract_dup(buffer, 0, gst_buffer_get_size(buffer), &data, &size);
    const Owned<char> encoded(g_base64_encode(static_cast<const guchar *>(data), size));
    g_free(data);
    return type.starts_with("image/") ? "data:" + type + ";base64," + encoded.get() : std::string();
}

/** The tag's value as an attribute line, empty for a kind of value that no line can hold. */
std::string line(const GstTagList *tags, const char *tag, const std::string &attribute)
{
    std::string text;
    GValue value = G_VALUE_INIT;
    if (!gst_tag_list_copy_value(&value, tags, tag)) {
        return text;
    }
    GValue number = G_VALUE_INIT;
    g_value_init(&number, G_TYPE_INT64);
    if (G_VALUE_HOLDS_STRING(&value)) {
        pps::appendText(text, attribute, g_value_get_string(&value));
    } else if (G_VALUE_HOLDS_BOOLEAN(&value)) {
        pps::appendBool(text, attribute, g_value_get_boolean(&value));
    } else if (G_VALUE_HOLDS_UINT(&value) || G_VALUE_HOLDS_INT(&value) || G_VALUE_HOLDS_UINT64(&value)
               || G_VALUE_HOLDS_INT64(&value)) {
        g_value_transform(&value, &number);
        pps::appendNumber(text, attribute, g_value_get_int64(&number));
    } else if (G_VALUE_HOLDS(&value, GST_TYPE_DATE_TIME)) {
        const Owned<char> date(gst_date_time_to_iso8601_string(static_cast<GstDateTime *>(g_value_get_boxed(&value))));
        pps::appendText(text, attribute, date ? date.get() : "");
    } else if (G_VALUE_HOLDS(&value, G_TYPE_DATE) || G_VALUE_HOLDS_DOUBLE(&value)) {
        const Owned<char> serialized(gst_value_serialize(&value));
        pps::appendText(text, attribute, serialized ? serialized.get() : "");
    } else if (G_VALUE_HOLDS(&value, GST_TYPE_SAMPLE)) {
        if (const std::string url = dataUrl(gst_value_get_sample(&value)); !url.empty()) {
            pps::appendText(text, attribute, url);
        }
    }
    g_value_unset(&value);
    g_value_unset(&number);
    return text;
}

} // namespace

/** In base64, behind what says so. */
const size_t MaximumPicture = (MaximumPictureText - 100) / 4 * 3;

std::string toAttributes(const GstTagList *tags, GstSample *thumbnail)
{
    std::map<std::string, std::string> lines;
    for (int i = 0; tags && i < gst_tag_list_n_tags(tags); ++i) {
        const char *tag = gst_tag_list_nth_tag_name(tags, static_cast<guint>(i));
        if (isUnsteady(tag)) {
            continue;
        }
        const std::string attribute = attributeOf(tag);
        const std::string text = line(tags, tag, attribute);
        if (!text.empty() && (!isLessThanKnown(tag) || !lines.contains(attribute))) {
            lines[attribute] = text;
        }
    }
    std::string result;
    for (const auto &[attribute, text] : lines) {
        if (attribute != GST_TAG_IMAGE && result.size() + text.size() <= MaximumTags) {
            result += text;
        }
    }
    if (const auto picture = lines.find(GST_TAG_IMAGE); picture != lines.end()) {
        result += picture->second;
    } else if (const std::string url = thumbnail ? dataUrl(thumbnail) : std::string(); !url.empty()) {
        pps::appendText(result, GST_TAG_IMAGE, url);
    }
    return result;
}

Owned<GstSample> pictureIn(const GstTagList *tags)
{
    GstSample *sample = nullptr;
    gst_tag_list_get_sample(tags, GST_TAG_IMAGE, &sample);
    Owned<GstSample> picture(sample);
    return picture && gst_sample_get_buffer(picture.get()) ? std::move(picture) : nullptr;
}

bool isTooLarge(GstSample *picture)
{
    return gst_buffer_get_size(gst_sample_get_buffer(picture)) > MaximumPicture;
}

} // namespace voro::renderer
