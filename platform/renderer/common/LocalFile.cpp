#include "LocalFile.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace voro::renderer {

namespace {

using FilesystemStatus = struct statfs;

/**
 * Whether a file shows the system itself: the memory of processes, the kernel's settings and traces. Such files count
 * as regular ones.
 */
bool isOfSystem(const pps::Fd &file)
{
    constexpr std::array<decltype(FilesystemStatus::f_type), 15> Types{
        PROC_SUPER_MAGIC, SYSFS_MAGIC,    DEBUGFS_MAGIC,      TRACEFS_MAGIC,       SECURITYFS_MAGIC,
        SELINUX_MAGIC,    SMACK_MAGIC,    CGROUP_SUPER_MAGIC, CGROUP2_SUPER_MAGIC, BPF_FS_MAGIC,
        PSTOREFS_MAGIC,   EFIVARFS_MAGIC, NSFS_MAGIC,         BINFMTFS_MAGIC,      DEVPTS_SUPER_MAGIC,
    };
    FilesystemStatus status{};
    return fstatfs(file.get(), &status) == 0 && std::ranges::find(Types, status.f_type) != Types.end();
}

} // namespace

LocalFile::Shared LocalFile::open(const std::string &path)
{
    return openAt(pps::Fd(::open(path.c_str(), O_PATH | O_CLOEXEC)));
}

LocalFile::Shared LocalFile::openAt(const pps::Fd &pathDescriptor)
{
    struct stat status {};
    if (!pathDescriptor.isValid() || fstat(pathDescriptor.get(), &status) != 0) {
        return std::make_shared<LocalFile>(errno);
    }
    // To open a device may change it.
    if (!S_ISREG(status.st_mode) || isOfSystem(pathDescriptor)) {
        return std::make_shared<LocalFile>(EMEDIUMTYPE);
    }
    pps::Fd file(::open(nameOf(pathDescriptor).c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    return file.isValid() ? std::make_shared<LocalFile>(std::move(file)) : std::make_shared<LocalFile>(errno);
}

std::string LocalFile::identity() const
{
    struct stat status {};
    return fstat(m_file.get(), &status) == 0 ? std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino)
                                             : std::string();
}

int64_t LocalFile::size() const
{
    struct stat status {};
    return fstat(m_file.get(), &status) == 0 ? status.st_size : 0;
}

ssize_t LocalFile::read(int64_t offset, std::span<std::byte> bytes) const
{
    size_t count = 0;
    while (count < bytes.size()) {
        const ssize_t size =
            pread(m_file.get(), bytes.data() + count, bytes.size() - count, offset + static_cast<off_t>(count));
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size < 0 && count == 0) {
            return -1;
        }
        if (size <= 0) {
            break;
        }
        count += static_cast<size_t>(size);
    }
    return static_cast<ssize_t>(count);
}

std::string LocalFile::at(int64_t offset, size_t size) const
{
    const int64_t rest = offset < 0 ? 0 : std::max<int64_t>(0, this->size() - offset);
    std::string text(std::min(size, static_cast<size_t>(rest)), '\0');
    const ssize_t count = read(offset, std::as_writable_bytes(std::span(text)));
    text.resize(static_cast<size_t>(std::max<ssize_t>(count, 0)));
    return text;
}

std::string LocalFile::lastBytes(size_t size) const
{
    return at(std::max<int64_t>(0, this->size() - static_cast<int64_t>(size)), size);
}

} // namespace voro::renderer
