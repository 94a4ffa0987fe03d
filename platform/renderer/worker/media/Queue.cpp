#include "Queue.h"

#include <utility>

namespace voro::renderer {

void Queue::assign(std::vector<QueueEntry> entries)
{
    m_entries = std::move(entries);
    m_current = 1;
    m_bad.clear();
}

std::optional<unsigned> Queue::after(unsigned track) const
{
    for (unsigned next = track + 1; next <= total(); ++next) {
        if (!m_bad.contains(next)) {
            return next;
        }
    }
    return std::nullopt;
}

std::optional<unsigned> Queue::before(unsigned track) const
{
    for (unsigned next = track - 1; next > 0; --next) {
        if (!m_bad.contains(next)) {
            return next;
        }
    }
    return std::nullopt;
}

std::optional<unsigned> Queue::following() const
{
    if (m_repeat == RepeatMode::Track) {
        return m_bad.contains(m_current) ? std::nullopt : std::optional(m_current);
    }
    const auto next = after(m_current);
    return next || m_repeat != RepeatMode::All ? next : after(0);
}

std::optional<unsigned> Queue::replacement(bool isForward) const
{
    const auto preferred = isForward ? after(m_current) : before(m_current);
    if (preferred) {
        return preferred;
    }
    if (!isForward) {
        return after(m_current);
    }
    return m_repeat == RepeatMode::All ? after(0) : std::nullopt;
}

} // namespace voro::renderer
