#pragma once

#include <renderer/common/OpenLocal.h>

#include <string>

namespace voro::renderer {

/**
 * How long a file is when it is opened. One that becomes shorter while it plays ends too early, and whoever reads it
 * takes that for its end.
 */
class Extent {
public:
    Extent() = default;
    // The file itself is watched, whatever becomes of its name.
    explicit Extent(const std::string &path) : m_file(openLocal(path)), m_size(m_file->size()) {}

    bool hasShrunk() const { return m_file && m_file->isOpen() && m_file->size() < m_size; }

private:
    LocalFile::Shared m_file;
    int64_t m_size = 0;
};

} // namespace voro::renderer
