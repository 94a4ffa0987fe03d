#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace voro::renderer {

/** A place in a queue. */
struct Entry {
    /** As an input URL: a path or `file://PATH` as it stands, or another URL. */
    std::string url;
    /** The name that the playlist gives it. */
    std::string title;
};

/** The tracks that are played one after the other, counted from 1. */
class Queue {
public:
    void assign(std::vector<Entry> entries);

    unsigned total() const { return static_cast<unsigned>(m_entries.size()); }
    unsigned current() const { return m_current; }
    const Entry &entry(unsigned track) const { return m_entries[track - 1]; }
    void setCurrent(unsigned track) { m_current = track; }
    /** "track" or "all"; anything else plays the queue once. */
    void setRepeat(const std::string &mode) { m_repeat = mode; }
    const std::string &repeat() const { return m_repeat; }

    /** A track that cannot be played is passed over from now on. */
    void setBad(unsigned track) { m_bad.insert(track); }
    /** What comes when the current track is over. */
    std::optional<unsigned> following() const;
    /** What is taken instead of the current track, which turned out to be bad, on the way that was being gone. */
    std::optional<unsigned> replacement(bool isForward) const;

private:
    std::optional<unsigned> after(unsigned track) const;
    std::optional<unsigned> before(unsigned track) const;

    std::vector<Entry> m_entries;
    unsigned m_current = 1;
    std::set<unsigned> m_bad;
    std::string m_repeat;
};

} // namespace voro::renderer
