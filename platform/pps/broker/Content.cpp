#include "Content.h"

#include <pps/Text.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

namespace voro::pps {

namespace {

constexpr size_t MaximumAttributes = 1024;
constexpr size_t MaximumDeletions = 256;

bool passes(const std::vector<std::string> &filter, std::string_view attribute)
{
    return filter.empty() || std::find(filter.begin(), filter.end(), attribute) != filter.end();
}

// A short text lies in the string itself, a long one in a block of its own.
size_t heapCost(const std::string &text)
{
    constexpr size_t BlockHead = 16;
    static const size_t ShortCapacity = std::string().capacity();
    return text.capacity() > ShortCapacity ? text.capacity() + BlockHead : 0;
}

} // namespace

/**
 * Finds the places of attributes while a message is applied. Most messages are short or write the attributes in the
 * order in which they are, so an index is only made for one that needs many searches.
 */
class Content::Finder {
public:
    explicit Finder(const std::vector<Attribute> &attributes) : m_attributes(attributes) {}

    /** The number of attributes when there is none of the name. */
    size_t find(std::string_view name, size_t guess)
    {
        const auto isNamed = [name](const Attribute &candidate) { return candidate.name() == name; };
        if (guess < m_attributes.size() && isNamed(m_attributes[guess])) {
            return guess;
        }
        if (m_searches < MaximumSearches) {
            ++m_searches;
            const auto found = std::find_if(m_attributes.begin(), m_attributes.end(), isNamed);
            return static_cast<size_t>(found - m_attributes.begin());
        }
        for (; m_indexed < m_attributes.size(); ++m_indexed) {
            m_places.insert_or_assign(std::string(m_attributes[m_indexed].name()), m_indexed);
        }
        const auto found = m_places.find(name);
        const bool isThere = found != m_places.end() && isNamed(m_attributes[found->second]);
        return isThere ? found->second : m_attributes.size();
    }

private:
    static constexpr int MaximumSearches = 16;

    const std::vector<Attribute> &m_attributes;
    int m_searches = 0;
    /** The last place of each name, also of one that was removed there. */
    std::map<std::string, size_t, std::less<>> m_places;
    size_t m_indexed = 0;
};

size_t Content::size(std::string_view name) const
{
    size_t size = name.size() + 3;
    for (const Attribute &attribute : m_attributes) {
        size += attribute.line.size() + 1;
    }
    for (const Deletion &deletion : m_deletions) {
        size += deletion.name.size() + 2;
    }
    return size;
}

size_t Content::cost() const
{
    size_t cost = m_attributes.capacity() * sizeof(Attribute) + m_deletions.capacity() * sizeof(Deletion);
    for (const Attribute &attribute : m_attributes) {
        cost += heapCost(attribute.line);
    }
    for (const Deletion &deletion : m_deletions) {
        cost += heapCost(deletion.name);
    }
    return cost;
}

bool Content::apply(std::string_view name, std::string_view text, bool replace, uint64_t version)
{
    if (!m_exists) {
        m_exists = true;
        m_created = version;
    } else if (replace) {
        m_replaced = version;
    }
    m_version = version;
    LineReader reader(text);
    Line line;
    Finder finder(m_attributes);
    size_t expected = 0;
    size_t removed = 0;
    while (reader.nextUnchecked(line)) {
        if (line.kind == Line::Kind::Object) {
            continue;
        }
        const bool isRemoved = line.mark == '-';
        const size_t place = finder.find(line.name, isRemoved ? 0 : expected++);
        if (!isRemoved) {
            set(line.whole, line.name, place);
        } else if (place < m_attributes.size()) {
            m_attributes[place] = {};
            ++removed;
            addDeletion(line.name);
        }
        if (m_attributes.size() - removed > MaximumAttributes) {
            return false;
        }
    }
    if (removed > 0) {
        closeGaps();
    }
    if (replace) {
        removeUnwritten();
    }
    if (size(name) > MaximumMessage) {
        m_deletions.clear();
        m_forgotten = version;
    }
    return size(name) <= MaximumMessage;
}

void Content::set(std::string_view line, std::string_view attribute, size_t place)
{
    if (place == m_attributes.size()) {
        std::erase_if(m_deletions, [&](const Deletion &deletion) { return deletion.name == attribute; });
        m_attributes.push_back({std::string(line), attribute.size(), m_version});
    } else {
        m_attributes[place].line = line;
        m_attributes[place].version = m_version;
    }
}

void Content::closeGaps()
{
    std::erase_if(m_attributes, [](const Attribute &attribute) { return attribute.line.empty(); });
    if (m_attributes.capacity() > 2 * MaximumAttributes) {
        m_attributes.shrink_to_fit();
    }
}

// No deletions: the mark before the object's name says that what is not there any more is gone.
void Content::removeUnwritten()
{
    std::erase_if(m_attributes, [this](const Attribute &attribute) { return attribute.version != m_version; });
    m_deletions.clear();
}

void Content::addDeletion(std::string_view attribute)
{
    if (m_deletions.size() == MaximumDeletions) {
        m_forgotten = m_deletions.front().version;
        m_deletions.erase(m_deletions.begin());
    }
    m_deletions.push_back({std::string(attribute), m_version});
}

void Content::remove(uint64_t version)
{
    m_version = version;
    m_exists = false;
    m_attributes = {};
    m_deletions = {};
}

bool Content::forgetDeletions()
{
    m_forgotten = m_version;
    return !std::exchange(m_deletions, {}).empty();
}

bool Content::mayContradict(const Selection &selection) const
{
    // A change that was chosen may hold any attribute.
    return selection.choosesChanges() || !m_exists || m_replaced == m_version
           || std::any_of(m_deletions.begin(), m_deletions.end(), [&](const Deletion &deletion) {
                  return deletion.version == m_version && passes(selection.filter, deletion.name);
              });
}

void Content::append(std::string &out, std::string_view name, uint64_t seen, uint64_t reported,
                     const Selection &selection) const
{
    const bool isFirst = reported == 0;
    const bool isFiltered = !selection.filter.empty();
    if (m_version <= seen || (!m_exists && (isFirst || isFiltered))) {
        return;
    }
    if (!m_exists) {
        out.append("-@").append(name).append("\n");
        return;
    }
    const size_t begin = out.size();
    if (!isFirst && m_created > reported) {
        out += '+';
    } else if (!isFirst && (m_replaced > reported || m_forgotten > reported)) {
        out += '*';
    }
    out.append("@").append(name).append("\n");
    const bool isWhole = !selection.delta || seen == 0 || m_forgotten > seen;
    bool isNews = !isFiltered;
    for (const Attribute &attribute : m_attributes) {
        const bool isNamed = passes(selection.filter, attribute.name());
        isNews = isNews || (isNamed && attribute.version > seen);
        if ((isNamed || selection.choosesChanges()) && (isWhole || attribute.version > seen)) {
            out.append(attribute.line).append("\n");
        }
    }
    if (!isNews) {
        out.resize(begin);
        return;
    }
    for (const Deletion &deletion : m_deletions) {
        if (!isFiltered && !isFirst && deletion.version > reported) {
            out.append("-").append(deletion.name).append("\n");
        }
    }
}

} // namespace voro::pps
