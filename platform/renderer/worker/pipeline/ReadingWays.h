#pragma once

#include <renderer/common/Medium.h>
#include <renderer/worker/gst/Failure.h>

#include <optional>
#include <string>

namespace voro::renderer {

/** The two ways in which a playbin reads a medium, each taken once: with its own elements, and with libavformat. */
class ReadingWays {
public:
    /** Takes the better way for this medium. */
    void begin(const Medium &medium);
    /**
     * Takes the other way; false when it was taken before or would not help. Without a failure the present way plays a
     * part of the medium.
     */
    bool takeOther(const Failure &failure);

    /** The URI for the playbin: the medium's own, or one of LibavProtocol. */
    std::string uri() const;
    bool isOwn() const { return !m_isLibav; }
    bool isFirst() const { return !m_firstFailure; }
    /** The most telling cause of all, after a last failure. */
    Failure cause(const Failure &last) const;

private:
    std::string m_uri;
    bool m_isLibav = false;
    /** Why the first way does not play the medium; without an error it plays a part. */
    std::optional<Failure> m_firstFailure;
};

} // namespace voro::renderer
