#include "TagPrecedence.h"

namespace voro::renderer {

Owned<GstTagList> TagPrecedence::choose(const GstTagList *tags, bool areOfSound)
{
    const bool areOfMedium = gst_tag_list_get_scope(tags) == GST_TAG_SCOPE_GLOBAL;
    const int rank = areOfMedium ? 2 : static_cast<int>(areOfSound);
    Owned<GstTagList> chosen(gst_tag_list_copy(tags));
    for (int i = 0; i < gst_tag_list_n_tags(tags); ++i) {
        const char *name = gst_tag_list_nth_tag_name(tags, static_cast<guint>(i));
        if (int &known = m_ranks[name]; known > rank) {
            gst_tag_list_remove_tag(chosen.get(), name);
        } else {
            known = rank;
        }
    }
    return chosen;
}

} // namespace voro::renderer
