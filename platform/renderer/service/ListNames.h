#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace voro::renderer {

/**
 * The names in the text of a list, however they are written: as paths or URIs, relative to the list or not, with
 * references of XML, with backslashes, in UTF-8 or Latin 1; the names of a stream's segments with what varies in them.
 */
class ListNames {
public:
    ListNames(std::string_view listPath, std::string_view text);

    /** Whether the list names a file; below the list's own folder its last part will do. */
    bool contain(const std::string &path) const;
    /** Whether the list names something on the network. */
    bool nameNetwork() const { return m_nameNetwork; }
    /** How many bytes it takes. */
    size_t size() const;

private:
    bool hasName(std::string_view name) const;

    /** With a slash at its end. */
    std::string m_folder;
    /** The text as it stands, and in the other ways to read it. */
    std::vector<std::string> m_texts;
    /** The texts around what varies in the names of segments. */
    std::vector<std::vector<std::string>> m_segments;
    bool m_nameNetwork = false;
};

} // namespace voro::renderer
