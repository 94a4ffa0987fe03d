#pragma once

#include <fcntl.h>
#include <pps/Fd.h>
#include <sys/stat.h>

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
    explicit Extent(const std::string &path) : m_file(open(path.c_str(), O_PATH | O_CLOEXEC)), m_size(size()) {}

    bool hasShrunk() const { return m_file.isValid() && size() < m_size; }

private:
    off_t size() const
    {
        struct stat status {};
        return fstat(m_file.get(), &status) == 0 ? status.st_size : 0;
    }

    pps::Fd m_file;
    off_t m_size = 0;
};

} // namespace voro::renderer
