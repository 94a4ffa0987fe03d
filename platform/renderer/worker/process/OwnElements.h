#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace voro::renderer {

/** The needs of a bin description of the user's own beyond those of the platform's own sinks and sources. */
struct OwnElements {
    /** Folders of files that it writes. */
    std::vector<std::string> folders;
    /** Files that it reads. */
    std::vector<std::string> files;
    /** Elements about which nothing is known, so that they get devices and everything below the user's rights. */
    std::vector<std::string> unknown;

    bool needNothing() const { return folders.empty() && unknown.empty(); }
    /**
     * Adds what a description needs, as `gst-launch` writes one: elements with properties, joined by exclamation
     * marks.
     */
    void add(std::string_view description);
};

} // namespace voro::renderer
