#include "Upgrade.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

namespace voro {

namespace {

constexpr char Running[] = "/proc/self/exe";

} // namespace

Upgrade::Upgrade(std::function<void()> found)
    : m_found(std::move(found)),
      m_program(std::filesystem::read_symlink(Running)),
      m_watch(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
      m_changed(m_watch.get(), QSocketNotifier::Read)
{
    // A file that is replaced loses its name, which is an attribute.
    inotify_add_watch(m_watch.get(), Running, IN_ATTRIB);
    QObject::connect(&m_changed, &QSocketNotifier::activated, [this] { check(); });
}

void Upgrade::check()
{
    char events[4096];
    while (read(m_watch.get(), events, sizeof events) > 0) {
    }
    struct stat ours {};
    struct stat there {};
    const bool isOther = stat(Running, &ours) == 0 && stat(m_program.c_str(), &there) == 0
                         && (ours.st_dev != there.st_dev || ours.st_ino != there.st_ino);
    if (isOther && access(m_program.c_str(), X_OK) == 0) {
        m_changed.setEnabled(false);
        m_found();
    }
}

} // namespace voro
