#include "FakeDevice.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstring>

namespace {

bool isFake(int fd)
{
    struct stat status {};
    return fstat(fd, &status) == 0 && S_ISFIFO(status.st_mode);
}

int answer(unsigned long request, void *argument)
{
    const unsigned number = _IOC_NR(request);
    const size_t size = _IOC_SIZE(request);
    auto *bytes = static_cast<uint8_t *>(argument);
    if (_IOC_DIR(request) == _IOC_WRITE) {
        return 0;
    }
    if (number == _IOC_NR(EVIOCGPHYS(0)) || number == _IOC_NR(EVIOCGUNIQ(0))) {
        errno = ENOENT;
        return -1;
    }
    std::memset(bytes, 0, size);
    if (number == _IOC_NR(EVIOCGBIT(0, 0))) {
        bytes[0] = 1 << EV_SYN | 1 << EV_KEY;
    } else if (number == _IOC_NR(EVIOCGBIT(EV_KEY, 0))) {
        std::memset(bytes + KEY_MUTE / 8, 0xff, size - KEY_MUTE / 8);
    }
    return static_cast<int>(size);
}

input_event makeEvent(unsigned type, unsigned code, int value, FakeDevice::Time at)
{
    using namespace std::chrono;
    const auto sinceStart = at.time_since_epoch();
    input_event event{};
    event.input_event_sec = duration_cast<seconds>(sinceStart).count();
    event.input_event_usec = duration_cast<microseconds>(sinceStart).count() % 1'000'000;
    event.type = static_cast<uint16_t>(type);
    event.code = static_cast<uint16_t>(code);
    event.value = value;
    return event;
}

} // namespace

// Found before the C library's, also by libevdev.
extern "C" int ioctl(int fd, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (_IOC_TYPE(request) == 'E' && isFake(fd)) {
        return answer(request, argument);
    }
    return static_cast<int>(syscall(SYS_ioctl, fd, request, argument));
}

FakeDevice::FakeDevice(const QString &path) : m_path(path.toLocal8Bit())
{
    if (mkfifo(m_path.constData(), 0600) != 0) {
        qFatal("cannot make %s", m_path.constData());
    }
}

FakeDevice::~FakeDevice()
{
    unlink(m_path.constData());
}

void FakeDevice::send(unsigned code, int value, Time at)
{
    write(std::array{makeEvent(EV_KEY, code, value, at), makeEvent(EV_SYN, SYN_REPORT, 0, at)});
}

void FakeDevice::sendPress(unsigned code, Time from, Time to)
{
    write(std::array{makeEvent(EV_KEY, code, 1, from), makeEvent(EV_SYN, SYN_REPORT, 0, from),
                     makeEvent(EV_KEY, code, 0, to), makeEvent(EV_SYN, SYN_REPORT, 0, to)});
}

void FakeDevice::sendLoss()
{
    const auto now = std::chrono::steady_clock::now();
    write(std::array{makeEvent(EV_SYN, SYN_DROPPED, 0, now), makeEvent(EV_SYN, SYN_REPORT, 0, now)});
}

void FakeDevice::write(std::span<const input_event> events)
{
    if (!m_writeEnd.isValid()) {
        m_writeEnd.reset(open(m_path.constData(), O_WRONLY | O_CLOEXEC));
    }
    if (::write(m_writeEnd.get(), events.data(), events.size_bytes()) != static_cast<ssize_t>(events.size_bytes())) {
        qFatal("cannot write to %s", m_path.constData());
    }
}
