#pragma once

#include <pps/Fd.h>
#include <renderer/common/Medium.h>

#include <string>

namespace voro::renderer {

/** A file of captions in a form that can be played: text in UTF-8, of a format that needs no styles. */
class CaptionFile {
public:
    /**
     * Reads the file and returns the URI of what is to be played instead; of what comes from the net and of
     * what has an unknown encoding it is the medium's own, of a file that cannot be read it is empty. It is valid until
     * the next call.
     */
    std::string open(const Medium &medium);
    void close() { m_copy.reset(); }

private:
    pps::Fd m_copy;
};

/** The events of an SSA or ASS script as SubRip text, without their styles; empty for anything else. */
std::string subRipOfScript(const std::string &script);

} // namespace voro::renderer
