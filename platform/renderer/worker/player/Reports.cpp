#include "Reports.h"

#include <pps/Text.h>
#include <renderer/common/Protocol.h>

#include <algorithm>

namespace voro::renderer {

namespace {

std::string event(std::string_view name)
{
    std::string lines;
    pps::appendText(lines, "msg", name);
    return lines;
}

std::string ending(std::string_view name, unsigned track, int64_t position)
{
    std::string lines = event(name);
    pps::appendNumber(lines, "track", track);
    pps::appendNumber(lines, PositionName, position);
    return lines;
}

} // namespace

void Reports::queue(unsigned current, unsigned total)
{
    std::string lines = event("queue");
    pps::appendNumber(lines, "current", current);
    pps::appendNumber(lines, "total", total);
    m_send(lines);
    std::erase_if(m_tracks, [current](const auto &told) {
        return told.first + Neighbourhood < current || told.first > current + Neighbourhood;
    });
}

void Reports::track(unsigned number, const std::string &uri, const Facts &facts)
{
    std::string lines = event("track");
    pps::appendNumber(lines, "track", number);
    pps::appendText(lines, "url", uri);
    lines += toAttributes(facts);
    if (std::string &last = m_tracks[number]; lines != last) {
        last = lines;
        m_send(lines);
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
        Facts facts;
        if (!title.empty()) {
            gst_tag_list_add(facts.tags.get(), GST_TAG_MERGE_REPLACE, GST_TAG_TITLE, title.c_str(), nullptr);
        }
        track(number, medium.uri(), facts);
    }
}

void Reports::status(int64_t position, int bufferLevel, const char *bufferStatus, int volume)
{
    std::string lines = event("status");
    pps::appendNumber(lines, PositionName, position);
    pps::appendText(lines, "bufferlevel", std::to_string(bufferLevel) + "/100");
    pps::appendText(lines, "bufferstatus", bufferStatus);
    pps::appendText(lines, "volume", std::to_string(volume) + "/100");
    m_send(lines);
}

void Reports::silent()
{
    m_send(event("silent"));
}

void Reports::speed(Speed speed)
{
    std::string lines = event("speed");
    pps::appendNumber(lines, "speed", speed.thousandths);
    m_send(lines);
}

void Reports::ended(unsigned track, int64_t position)
{
    m_send(ending("ended", track, position));
}

void Reports::failed(const Result &result, unsigned track, int64_t position)
{
    std::string lines = ending("failed", track, position);
    pps::appendNumber(lines, "err", static_cast<int>(result.code));
    pps::appendText(lines, "error", result.text);
    m_send(lines);
}

} // namespace voro::renderer
