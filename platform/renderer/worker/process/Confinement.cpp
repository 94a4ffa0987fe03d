#include "Confinement.h"

#include "Landlock.h"
#include "Namespaces.h"
#include "SoundServer.h"
#include "SystemPlaces.h"

#include <linux/capability.h>
#include <pps/Log.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string>

namespace voro::renderer {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// The sanitizer needs more than any medium.
constexpr rlim_t MostMemory = RLIM_INFINITY;
constexpr rlim_t MostAddresses = RLIM_INFINITY;
#else
constexpr rlim_t MostMemory = rlim_t{2} << 30;
constexpr rlim_t MostAddresses = rlim_t{16} << 30;
#endif
constexpr rlim_t MostDescriptors = 512;

constexpr const char *Settings[] = {"VORO_AUDIO_SINK", "VORO_AUDIO_SOURCE", "VORO_VIDEO_SINK"};

void limit(__rlimit_resource_t resource, rlim_t most)
{
    const rlimit both{most, most};
    setrlimit(resource, &both);
}

OwnElements ownElements()
{
    OwnElements elements;
    for (const char *setting : Settings) {
        if (const char *description = std::getenv(setting)) {
            elements.add(description);
        }
    }
    return elements;
}

void dropCapabilities()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3]{};
    syscall(SYS_capset, &header, none);
}

} // namespace

void restrictProcess()
{
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    // A file that has reached its limit fails the recording and nothing more.
    std::signal(SIGXFSZ, SIG_IGN);
    // Nobody may read what it complains about any more while it completes a recording.
    std::signal(SIGPIPE, SIG_IGN);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_DATA, MostMemory);
}

void setOutliving(bool isOutliving)
{
    std::signal(SIGTERM, isOutliving ? SIG_IGN : SIG_DFL);
}

Confinement::Confinement(Layers layers)
    : m_layers(layers),
      m_elements(ownElements()),
      m_keepsNetwork(!m_elements.unknown.empty() || isSoundServerFar())
{}

void Confinement::begin()
{
    for (const std::string &name : m_elements.unknown) {
        log::warn(log::Category::Worker, "files and devices are open to workers, for the element %s", name.c_str());
    }
    for (const std::string &folder : m_elements.folders) {
        log::warn(log::Category::Worker, "workers may write files in %s, for filesink", folder.c_str());
    }
    if (m_keepsNetwork) {
        log::warn(log::Category::Worker, "workers keep the network, for the sound server or sinks and sources");
    }
    if (m_elements.unknown.empty() && m_layers.namespaces) {
        m_isInNamespaces = enterNamespaces(m_elements);
        if (!m_isInNamespaces) {
            log::warn(log::Category::Worker, "this system gives workers no namespaces of their own");
        }
    }
    // Not before: a process that cannot be dumped does not own its maps of users.
    prctl(PR_SET_DUMPABLE, 0);
}

void Confinement::leaveNetwork()
{
    if (m_isInNamespaces && !m_keepsNetwork && !renderer::leaveNetwork()) {
        log::warn(log::Category::Worker, "this system gives workers no network namespace");
    }
}

void Confinement::prepare(Reach reach)
{
    callsFor(reach);
}

Reach Confinement::widened(Reach reach) const
{
    return {.network = reach.network || m_keepsNetwork, .windows = reach.windows};
}

const SystemCalls &Confinement::callsFor(Reach reach)
{
    const auto found = std::ranges::find(m_calls, reach, &std::pair<Reach, SystemCalls>::first);
    if (found != m_calls.end()) {
        return found->second;
    }
    const Devices devices = m_elements.unknown.empty() ? Devices::Closed : Devices::Open;
    const Files files = m_elements.needNothing() ? Files::ReadOnly : Files::Writable;
    return m_calls.emplace_back(reach, SystemCalls(devices, files, widened(reach))).second;
}

void Confinement::complete(Reach reach)
{
    // Not in the nursery, which passes descriptors: the kernel compares this limit with all that the user has in
    // flight.
    limit(RLIMIT_NOFILE, MostDescriptors);
    if (m_elements.unknown.empty()) {
        // What is mapped and not used has tables all the same. Drivers of GPUs map far more than there is.
        limit(RLIMIT_AS, MostAddresses);
    }
    if (m_isInNamespaces && !narrowNamespaces(widened(reach))) {
        log::warn(log::Category::Worker, "a worker sees other processes and the X servers");
    }
    dropCapabilities();
    prctl(PR_SET_DUMPABLE, 0);
    if (m_layers.landlock && !limitFiles(reach)) {
        log::warn(log::Category::Worker, "this kernel does not limit access to files (Landlock)");
    }
    if (m_layers.systemCalls && !callsFor(reach).enforce()) {
        log::warn(log::Category::Worker, "this kernel does not limit system calls (seccomp)");
    }
}

bool Confinement::limitFiles(Reach reach) const
{
    Landlock landlock;
    for (const auto &places : {systemPlaces(), m_elements.files}) {
        for (const std::string &path : places) {
            landlock.allow(path.c_str(), Landlock::Access::Read);
        }
    }
    for (const char *device : {"/dev/null", "/dev/zero", "/dev/full"}) {
        landlock.allow(device, Landlock::Access::Write);
    }
    for (const std::string &folder : m_elements.folders) {
        landlock.allow(folder.c_str(), Landlock::Access::Create);
    }
    if (!m_elements.unknown.empty()) {
        landlock.allow("/", Landlock::Access::Create);
        landlock.allow("/dev", Landlock::Access::Control);
    }
    if (widened(reach).network) {
        landlock.allowConnections();
        for (const std::string &path : networkPlaces()) {
            landlock.allow(path.c_str(), Landlock::Access::Read);
        }
    }
    if (reach.windows) {
        for (const std::string &path : screenPlaces()) {
            landlock.allow(path.c_str(), Landlock::Access::Read);
        }
    }
    return landlock.enforce();
}

} // namespace voro::renderer
