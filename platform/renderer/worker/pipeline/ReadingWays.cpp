#include "ReadingWays.h"

#include <renderer/worker/media/FileFormat.h>
#include <renderer/worker/media/Libav.h>

namespace voro::renderer {

void ReadingWays::begin(const Medium &medium)
{
    m_uri = medium.uri();
    m_firstFailure.reset();
    // Of some formats GStreamer's own elements report no tags, or wrong durations.
    m_isLibav = medium.isLocal() && isReadBestByLibavformat(medium.path()) && !libavUri(m_uri).empty();
}

bool ReadingWays::takeOther(const Failure &failure)
{
    if (!isOfMedium(failure.result) || libavUri(m_uri).empty()) {
        return false;
    }
    // Once each, unless the first one at least plays a part.
    if (m_firstFailure && !m_firstFailure->result) {
        return false;
    }
    m_firstFailure = failure;
    m_isLibav = !m_isLibav;
    return true;
}

std::string ReadingWays::uri() const
{
    return m_isLibav ? libavUri(m_uri) : m_uri;
}

Failure ReadingWays::cause(const Failure &last) const
{
    const bool isFirst =
        m_firstFailure && isOfMedium(last.result) && !last.namesCodec && (m_isLibav || m_firstFailure->namesCodec);
    return isFirst ? *m_firstFailure : last;
}

} // namespace voro::renderer
