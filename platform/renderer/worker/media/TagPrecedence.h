#pragma once

#include <renderer/worker/gst/Gst.h>

#include <map>
#include <string>

namespace voro::renderer {

/**
 * Chooses among what a medium says of itself: its own title counts more than that of its sound, and that of the sound
 * more than those of its pictures and captions.
 */
class TagPrecedence {
public:
    /** Those of the tags that count no less than what was said before. */
    Owned<GstTagList> choose(const GstTagList *tags, bool areOfSound);
    void clear() { m_ranks.clear(); }

private:
    /** How much the last one of each name counts. */
    std::map<std::string, int> m_ranks;
};

} // namespace voro::renderer
