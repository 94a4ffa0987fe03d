#include "Presses.h"

#include <algorithm>

namespace voro::mediakeys {

void Presses::press(SourceId source, Key key, Time at, Owners owners)
{
    if (find(source, key) == m_presses.end()) {
        m_presses.push_back({source, key, at, std::move(owners)});
    }
}

void Presses::release(SourceId source, Key key, Time at)
{
    const auto found = find(source, key);
    if (found == m_presses.end()) {
        return;
    }
    const Press press = std::move(*found);
    m_presses.erase(found);
    const bool isBefore = at < press.since + Threshold;
    if (!isBefore && !press.isReported) {
        m_report(Event::ThresholdReached, key, press.owners);
    }
    m_report(isBefore ? Event::ReleasedBefore : Event::ReleasedAfter, key, press.owners);
}

void Presses::forget(SourceId source)
{
    std::erase_if(m_presses, [source](const Press &press) {
        return press.source.kind == source.kind && press.source.number == source.number;
    });
}

void Presses::advance(Time now)
{
    for (Press &press : m_presses) {
        if (!press.isReported && press.since + Threshold <= now) {
            press.isReported = true;
            m_report(Event::ThresholdReached, press.key, press.owners);
        }
    }
}

std::optional<Time> Presses::next() const
{
    std::optional<Time> next;
    for (const Press &press : m_presses) {
        if (!press.isReported && (!next || press.since + Threshold < *next)) {
            next = press.since + Threshold;
        }
    }
    return next;
}

std::vector<Presses::Press>::iterator Presses::find(SourceId source, Key key)
{
    return std::find_if(m_presses.begin(), m_presses.end(),
                        [&](const Press &press) { return press.source == source && press.key == key; });
}

} // namespace voro::mediakeys
