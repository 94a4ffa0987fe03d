#include "RecordingFile.h"

#include <fcntl.h>
#include <renderer/common/Medium.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

namespace voro::renderer {

namespace {

namespace fs = std::filesystem;

/** The keys of all that are taken. */
std::set<std::string> &taken()
{
    static std::set<std::string> keys;
    return keys;
}

std::string keyOf(const FileView &view, const std::string &path)
{
    if (!view.name().empty()) {
        return view.name() + path;
    }
    std::error_code error;
    const fs::path canonical = fs::weakly_canonical(path, error);
    return error ? path : canonical.string();
}

const RecordingFormat *formatOf(const std::string &path)
{
    const std::string extension = fs::path(path).extension();
    return extension.empty() ? nullptr : recordingFormat(std::string_view(extension).substr(1));
}

Result failure(const std::string &path, int error)
{
    const std::string text = path + ": " + std::strerror(error);
    switch (error) {
    case EACCES:
    case EPERM:
    case EROFS:
        return {ErrorCode::Permission, text};
    case ENOSPC:
    case EDQUOT:
    case EIO:
        return {ErrorCode::Write, text};
    default:
        return {ErrorCode::OutputUnavailable, text};
    }
}

/** The bits that the process takes from files that it makes; nothing when it has gone. */
std::optional<mode_t> umaskOf(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;) {
        if (mode_t mask = 0; word == "Umask:" && status >> std::oct >> mask) {
            return mask;
        }
    }
    return std::nullopt;
}

bool isAccessible(const pps::Fd &place, int mode)
{
    return faccessat(AT_FDCWD, nameOf(place).c_str(), mode, AT_EACCESS) == 0;
}

Result checkFolder(const FileView &view, const std::string &path)
{
    const std::string folder = fs::path(path).parent_path();
    const pps::Fd place = view.open(folder, O_PATH | O_DIRECTORY | O_CLOEXEC);
    return place.isValid() && isAccessible(place, W_OK | X_OK) ? Result() : failure(folder, errno);
}

} // namespace

std::shared_ptr<OpenRecording> OpenRecording::make(const FileView::Shared &view, const std::string &path, pid_t process)
{
    return {new OpenRecording(view, path, process), [](OpenRecording *recording) {
                try {
                    std::thread([recording] {
                        recording->close();
                        delete recording;
                    }).detach();
                } catch (const std::system_error &) {
                    // No thread is to be had, and closing may wait for ever: it stays open until the process ends.
                }
            }};
}

Result OpenRecording::open()
{
    constexpr int Flags = O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    bool isNew = false;
    m_file = m_view->open(m_path, Flags);
    if (!m_file.isValid() && errno == ENOENT) {
        m_file = m_view->open(m_path, Flags | O_CREAT | O_EXCL, 0666);
        isNew = m_file.isValid();
        if (const auto mask = umaskOf(m_process); isNew && mask) {
            fchmod(m_file.get(), 0666 & ~*mask);
        }
    }
    struct stat status {};
    if (!m_file.isValid() || fstat(m_file.get(), &status) != 0) {
        return failure(m_path, errno);
    }
    if (isNew) {
        m_made = {status.st_dev, status.st_ino};
    }
    if (!S_ISREG(status.st_mode)) {
        return {ErrorCode::OutputUnavailable, m_path + " is not a regular file"};
    }
    // The path may lead to what somebody else records into under another name.
    if (flock(m_file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        return {ErrorCode::ResourceUnavailable, m_path + " is in use"};
    }
    return {};
}

void OpenRecording::close()
{
    struct stat there {};
    const fs::path path(m_path);
    const bool mayGo = m_made && !m_isKept;
    const pps::Fd folder = mayGo ? m_view->open(path.parent_path(), O_PATH | O_DIRECTORY | O_CLOEXEC) : pps::Fd();
    if (folder.isValid() && fstatat(folder.get(), path.filename().c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0
        && there.st_size == 0 && m_made == std::pair(there.st_dev, there.st_ino)) {
        unlinkat(folder.get(), path.filename().c_str(), 0);
    }
    m_file.reset();
}

RecordingFile::RecordingFile(const std::string &path, const std::string &key)
    : m_path(path),
      m_key(key),
      m_format(formatOf(path))
{}

bool RecordingFile::hasFormat(const std::string &path)
{
    return formatOf(path) != nullptr;
}

bool RecordingFile::take()
{
    m_isTaken = m_isTaken || taken().insert(m_key).second;
    return m_isTaken;
}

void RecordingFile::release()
{
    if (std::exchange(m_isTaken, false)) {
        taken().erase(m_key);
    }
}

std::string RecordingFile::pathOf(std::string_view url)
{
    const Medium medium(url);
    return medium.isLocal() ? medium.path() : std::string();
}

Result RecordingFile::inspect(const FileView &view, const std::string &path, std::string &key)
{
    if (!path.starts_with('/')) {
        return {ErrorCode::OutputUnavailable, "a recording needs the whole path of a file"};
    }
    if (!formatOf(path)) {
        return {ErrorCode::UnsupportedMediaType, path + " has no extension of a format that can be recorded"};
    }
    struct stat status {};
    const pps::Fd place = view.open(path, O_PATH | O_CLOEXEC);
    if (!place.isValid() && errno != ENOENT) {
        return failure(path, errno);
    }
    if (place.isValid() && (fstat(place.get(), &status) != 0 || !S_ISREG(status.st_mode))) {
        return {ErrorCode::OutputUnavailable, path + " is not a regular file"};
    }
    key = keyOf(view, path);
    if (!place.isValid()) {
        return checkFolder(view, path);
    }
    return isAccessible(place, W_OK) ? Result() : failure(path, errno);
}

} // namespace voro::renderer
