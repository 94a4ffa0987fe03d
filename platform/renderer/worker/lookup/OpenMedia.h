#pragma once

#include <string>
#include <vector>

namespace voro::renderer {

/**
 * The media that somebody has opened by their URIs, until they are cleared. While one of them comes from the net, no
 * other file can be opened by a URI: what a server sends may name files, as the segments of a stream for example.
 * May be used by every thread.
 */
class OpenMedia {
public:
    OpenMedia() = default;
    ~OpenMedia() { clear(); }
    OpenMedia(const OpenMedia &) = delete;
    OpenMedia &operator=(const OpenMedia &) = delete;

    void add(const std::string &uri);
    void clear();
    /** Whether anybody has opened it. */
    static bool contains(const char *uri);
    /** Whether a file may be opened by its URI now. */
    static bool mayBeOpened(const std::string &uri);

private:
    std::vector<std::string> m_uris;
};

} // namespace voro::renderer
