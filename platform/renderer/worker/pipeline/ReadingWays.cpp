#include "ReadingWays.h"

#include <renderer/worker/media/FileFormat.h>
#include <renderer/worker/media/Libav.h>

namespace voro::renderer {

void ReadingWays::begin(const std::string &uri)
{
    m_uri = uri;
    m_firstFailure.reset();
    // GStreamer's own elements tell no tags of some formats, or wrong durations.
    const Owned<char> path(g_filename_from_uri(uri.c_str(), nullptr, nullptr));
    m_isLibav = path && isReadBestByLibavformat(path.get()) && !libavUri(uri).empty();
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
