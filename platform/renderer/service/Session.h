#pragma once

#include <pps/Text.h>
#include <renderer/common/Protocol.h>

#include <string>

namespace voro::renderer {

/** What drawing into a window needs of an application's session. */
struct Session {
    /** The X server; empty without one. */
    std::string display;
    /** The file with the right to use it; empty for the usual one. */
    std::string authority;

    bool operator==(const Session &) const = default;

    static Session of(const pps::Message &message) { return {message.text(DisplayName), message.text(AuthorityName)}; }
    std::string toText() const
    {
        std::string lines;
        if (!display.empty()) {
            pps::appendText(lines, DisplayName, display);
            pps::appendText(lines, AuthorityName, authority);
        }
        return lines;
    }
};

} // namespace voro::renderer
