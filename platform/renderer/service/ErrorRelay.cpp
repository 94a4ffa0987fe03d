#include "ErrorRelay.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>

namespace voro::renderer {

int ErrorRelay::descriptor()
{
    // Workers keep it as long as this process.
    static const auto *const relay = new ErrorRelay;
    return relay->m_output.isValid() ? relay->m_output.get() : STDERR_FILENO;
}

ErrorRelay::ErrorRelay()
{
    struct stat status {};
    std::array<int, 2> ends{};
    if (fstat(STDERR_FILENO, &status) != 0 || !S_ISREG(status.st_mode) || pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;
    }
    m_input.reset(ends[0]);
    m_output.reset(ends[1]);
    fcntl(m_input.get(), F_SETFL, O_NONBLOCK);
    m_readable = std::make_unique<QSocketNotifier>(m_input.get(), QSocketNotifier::Read);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, [this] {
        std::array<char, 4096> text;
        if (const ssize_t size = read(m_input.get(), text.data(), text.size()); size > 0) {
            std::fwrite(text.data(), 1, static_cast<size_t>(size), stderr);
        }
    });
}

} // namespace voro::renderer
