#include "Reports.h"

#include <pps/Log.h>
#include <pps/Text.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

void Reports::queue(unsigned current, unsigned total)
{
    m_send(events::Queue{current, total});
    std::erase_if(m_tracks, [current](const auto &reported) {
        return reported.first + Neighbourhood < current || reported.first > current + Neighbourhood;
    });
}

void Reports::track(unsigned number, const std::string &uri, const TrackInfo &info)
{
    std::string metadata;
    pps::appendText(metadata, "url", uri);
    metadata += toAttributes(info);
    if (std::string &last = m_tracks[number]; metadata != last) {
        last = metadata;
        m_send(events::Track{number, std::move(metadata)});
    }
}

void Reports::neighbours(const Queue &queue)
{
    const unsigned current = queue.current();
    const unsigned first = current > Neighbourhood ? current - Neighbourhood : 1;
    for (unsigned number = first; number <= std::min(current + Neighbourhood, queue.total()); ++number) {
        if (m_tracks.contains(number)) {
            continue;
        }
        const auto &[medium, title] = queue.entry(number);
        TrackInfo info;
        if (!title.empty()) {
            gst_tag_list_add(info.tags.get(), GST_TAG_MERGE_REPLACE, GST_TAG_TITLE, title.c_str(), nullptr);
        }
        track(number, medium.uri(), info);
    }
}

void Reports::logPassedOver(unsigned track, const std::string &cause)
{
    constexpr int Most = 50;
    static int count = 0;
    if (++count <= Most) {
        log::warn(log::Category::Worker, "track %u is passed over: %s", track, cause.c_str());
    } else if (count == Most + 1) {
        log::warn(log::Category::Worker, "further skipped tracks are not logged");
    }
}

void Reports::failed(const Result &result, unsigned track, int64_t position)
{
    m_send(events::Failed{track, position, static_cast<int64_t>(result.code), result.text});
}

} // namespace voro::renderer
