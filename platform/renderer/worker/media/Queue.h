#pragma once

#include <renderer/common/Medium.h>
#include <renderer/common/Names.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace voro::renderer {

/** A place in a queue. */
struct QueueEntry {
    Medium medium;
    /** The name that the playlist gives it. */
    std::string title;
};

/** The tracks that are played one after the other, counted from 1. */
class Queue {
public:
    void assign(std::vector<QueueEntry> entries);

    unsigned total() const { return static_cast<unsigned>(m_entries.size()); }
    unsigned current() const { return m_current; }
    const QueueEntry &entry(unsigned track) const { return m_entries[track - 1]; }
    void setCurrent(unsigned track) { m_current = track; }
    void setRepeat(RepeatMode mode) { m_repeat = mode; }

    /** A track that cannot be played is passed over from now on. */
    void setBad(unsigned track) { m_bad.insert(track); }
    /** The track after the current one. */
    std::optional<unsigned> following() const;
    /** The track to play instead of the current one, which turned out to be bad. */
    std::optional<unsigned> replacement(bool isForward) const;

private:
    std::optional<unsigned> after(unsigned track) const;
    std::optional<unsigned> before(unsigned track) const;

    std::vector<QueueEntry> m_entries;
    unsigned m_current = 1;
    std::set<unsigned> m_bad;
    RepeatMode m_repeat = RepeatMode::None;
};

} // namespace voro::renderer
