#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace voro::pps {

/** The part of an object that a reader wants. */
struct Selection {
    /** The attributes written since the last read, instead of the whole object. */
    bool delta = false;
    /**
     * The attributes named; empty for everything. No deletion passes a filter. With `delta` it chooses changes: the
     * write of an attribute named delivers all that was written since the last delivery.
     */
    std::vector<std::string> filter;
    bool choosesChanges() const { return delta && !filter.empty(); }
};

/** The content of an object, each part with the version of its last write. Copied as a fence's snapshot. */
class Content {
public:
    bool exists() const { return m_exists; }
    /** The version of the last write; 0 when there was none. */
    uint64_t version() const { return m_version; }
    /** The length of the longest text that a read can give. */
    size_t size(std::string_view name) const;
    /** How many bytes of memory it takes. */
    size_t cost() const;

    /**
     * Applies the lines of a message that is known to be valid; false, with the content in between, when it is too
     * large then.
     */
    bool apply(std::string_view name, std::string_view text, bool replace, uint64_t version);
    /** Deletes the object; readers that saw its attributes can still learn of it. */
    void remove(uint64_t version);
    /** Forgets what was deleted; for when no reader is left that has to learn of it. False when there was nothing. */
    bool forgetDeletions();

    /**
     * Appends the news for a reader that has seen everything up to the version `seen` (0: nothing). Deletions are news
     * when they came after the version `reported`, which is not 0 once the reader has read anything.
     */
    void append(std::string &out, std::string_view name, uint64_t seen, uint64_t reported,
                const Selection &selection) const;

    /**
     * Whether a reader may have got something that the last write made untrue, although that write is no news for the
     * selection.
     */
    bool mayContradict(const Selection &selection) const;

private:
    struct Attribute {
        /** "name:encoding:value"; empty once it is removed, until the message that does so is applied. */
        std::string line;
        size_t nameSize;
        uint64_t version;
        std::string_view name() const { return std::string_view(line).substr(0, nameSize); }
    };
    struct Deletion {
        std::string name;
        uint64_t version;
    };

    class Finder;

    void set(std::string_view line, std::string_view attribute, size_t place);
    void removeUnwritten();
    void closeGaps();
    void addDeletion(std::string_view attribute);

    bool m_exists = false;
    std::vector<Attribute> m_attributes;
    std::vector<Deletion> m_deletions;
    uint64_t m_version = 0;
    uint64_t m_created = 0;
    uint64_t m_replaced = 0;
    /** Deletions up to this version were forgotten; a reader that has seen less gets a replacement. */
    uint64_t m_forgotten = 0;
};

} // namespace voro::pps
