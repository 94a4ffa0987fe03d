#pragma once

#include <unistd.h>

#include <string>
#include <utility>

namespace voro::pps {

/** Owns a file descriptor. */
class Fd {
public:
    Fd() = default;
    explicit Fd(int fd) : m_fd(fd) {}
    Fd(Fd &&other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    Fd &operator=(Fd &&other) noexcept
    {
        reset(other.release());
        return *this;
    }
    ~Fd() { reset(); }

    int get() const { return m_fd; }
    bool isValid() const { return m_fd >= 0; }
    int release() { return std::exchange(m_fd, -1); }
    void reset(int fd = -1)
    {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
        m_fd = fd;
    }

private:
    int m_fd = -1;
};

/** The name by which this process opens one of its descriptors again. */
inline std::string nameOf(const Fd &descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor.get());
}

} // namespace voro::pps
