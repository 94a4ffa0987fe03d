#include "MemoryFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <utility>

namespace voro::renderer {

namespace {

pps::Fd makeOwn(size_t size)
{
    // The function of the C library may lead here.
    pps::Fd file(static_cast<int>(syscall(SYS_memfd_create, "voro", MFD_CLOEXEC | MFD_ALLOW_SEALING)));
    const bool isGood =
        ftruncate(file.get(), static_cast<off_t>(size)) == 0 && fcntl(file.get(), F_ADD_SEALS, F_SEAL_GROW) == 0;
    return isGood ? std::move(file) : pps::Fd();
}

MemoryMaker &maker()
{
    static MemoryMaker maker = makeOwn;
    return maker;
}

} // namespace

void setMemoryMaker(MemoryMaker other)
{
    maker() = std::move(other);
}

pps::Fd makeMemoryFile(size_t size)
{
    return maker()(size);
}

pps::Fd makeMemoryFile(std::string_view content)
{
    pps::Fd file = makeMemoryFile(content.size());
    const bool isWritten =
        pwrite(file.get(), content.data(), content.size(), 0) == static_cast<ssize_t>(content.size());
    return isWritten ? std::move(file) : pps::Fd();
}

} // namespace voro::renderer
