#pragma once

#include "Error.h"

#include <string>
#include <string_view>

namespace voro::renderer {

/** A medium as an input URL names it. Made where the URL is read, and carried from there. */
class Medium {
public:
    /** None. */
    Medium() = default;
    /** A bare path or `file://PATH`, both as they stand and never decoded, or any other URL. */
    explicit Medium(std::string_view url);

    /** Whether there is no URL. */
    bool isEmpty() const { return m_url.empty(); }
    /** Whether it is a file of this machine. */
    bool isLocal() const { return m_isLocal; }
    /** The URL as it was given. */
    const std::string &url() const { return m_url; }
    /** The path of a local file. */
    std::string path() const { return m_url.substr(m_start); }
    /** The medium as a proper URI, percent-encoded. */
    std::string uri() const;

    /**
     * Whether a local medium can be read: distinguishes missing, unreadable, no file, and empty. Opens no device and
     * waits for nobody. No error for what is not local.
     */
    Result check() const;
    /** Whether the medium is a playlist, by its content and by its name. Only for what can be read. */
    bool isPlaylist() const;
    /**
     * Whether the beginning of a content is a playlist's: "#EXTM3U" is one unless it is a stream's own index, which
     * plays like a medium.
     */
    static bool isPlaylistText(std::string_view head);
    /** Whether it is such an index, which names the pieces of a stream: of HLS, DASH or Smooth Streaming. */
    static bool isStreamIndex(std::string_view head);
    /** A text without the mark of UTF-8 that some programs write at its beginning. */
    static std::string_view withoutByteOrderMark(std::string_view text);
    /** Whether media come from the network by that scheme, whatever its case. */
    static bool isNetworkScheme(std::string_view scheme);
    /** Whether it has a playlist's name. */
    bool isNamedLikePlaylist() const;
    /** Whether a local file begins like a medium of a common format. */
    bool beginsLikeMedium() const;

    bool operator==(const Medium &) const = default;

private:
    std::string m_url;
    /** Where the path begins. */
    size_t m_start = 0;
    bool m_isLocal = true;
};

} // namespace voro::renderer
