#include "InputDevices.h"

#include <pps/Log.h>
#include <sys/inotify.h>

#include <array>
#include <cstdio>
#include <filesystem>

namespace voro::mediakeys {

InputDevices::InputDevices(KeyListener &listener, std::string folder)
    : m_listener(listener),
      m_folder(std::move(folder))
{
    m_watch.reset(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!m_watch.isValid()) {
        std::perror("vorod: input devices cannot be watched");
        return;
    }
    m_watchReady = std::make_unique<QSocketNotifier>(m_watch.get(), QSocketNotifier::Read);
    QObject::connect(m_watchReady.get(), &QSocketNotifier::activated, [this] { readWatch(); });
    watch();
}

// The folder comes with the first device and goes with the last one.
void InputDevices::watch()
{
    const std::string parent = std::filesystem::path(m_folder).parent_path();
    m_parentWatch = inotify_add_watch(m_watch.get(), parent.c_str(), IN_CREATE | IN_MOVED_TO);
    m_folderWatch = inotify_add_watch(m_watch.get(), m_folder.c_str(), IN_CREATE | IN_ATTRIB);
    if (m_folderWatch >= 0) {
        scan();
    }
}

void InputDevices::readWatch()
{
    alignas(inotify_event) std::array<char, 4096> bytes;
    const ssize_t size = ::read(m_watch.get(), bytes.data(), bytes.size());
    for (ssize_t at = 0; at < size;) {
        const auto *event = reinterpret_cast<const inotify_event *>(bytes.data() + at);
        at += static_cast<ssize_t>(sizeof(inotify_event)) + event->len;
        const std::string name = event->len > 0 ? event->name : "";
        if (event->mask & IN_Q_OVERFLOW) {
            scan();
        } else if (event->wd == m_folderWatch && event->mask & (IN_CREATE | IN_ATTRIB)) {
            add(name);
        } else if (event->wd == m_parentWatch && std::filesystem::path(m_folder).filename() == name) {
            watch();
        }
    }
}

void InputDevices::scan()
{
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(m_folder, error)) {
        add(entry.path().filename());
    }
}

void InputDevices::add(const std::string &name)
{
    if (!name.starts_with("event")) {
        return;
    }
    const std::string path = m_folder + '/' + name;
    if (const auto known = m_devices.find(name); known != m_devices.end()) {
        if (known->second.device->isAt(path)) {
            return;
        }
        // It went and another one came, and we have not seen the end yet.
        remove(name);
    }
    OpenDevice entry{++m_lastNumber, nullptr, nullptr};
    const auto outcome = InputDevice::open(path, entry.device);
    if (outcome == InputDevice::Outcome::NoPermission && !m_hasWarned) {
        m_hasWarned = true;
        log::warn(log::Category::Keys, "no permission to read media keys from %s; is the user in the group input?",
                  m_folder.c_str());
    }
    if (outcome != InputDevice::Outcome::Open) {
        return;
    }
    entry.notifier = std::make_unique<QSocketNotifier>(entry.device->fd(), QSocketNotifier::Read);
    QObject::connect(entry.notifier.get(), &QSocketNotifier::activated, [this] { read(); });
    m_devices.emplace(name, std::move(entry));
}

void InputDevices::read()
{
    for (auto entry = m_devices.begin(); entry != m_devices.end();) {
        const auto next = std::next(entry);
        if (!read(entry->second)) {
            remove(entry->first);
        }
        entry = next;
    }
}

bool InputDevices::read(const OpenDevice &entry)
{
    return entry.device->read({SourceId::Device, entry.number}, m_listener);
}

void InputDevices::remove(const std::string &name)
{
    const auto entry = m_devices.extract(name);
    if (!entry) {
        return;
    }
    read(entry.mapped());
    // Its notifier may be what called us.
    entry.mapped().notifier->setEnabled(false);
    entry.mapped().notifier.release()->deleteLater();
    m_listener.sourceGone({SourceId::Device, entry.mapped().number});
}

} // namespace voro::mediakeys
