#include "Confinement.h"

#include "Landlock.h"
#include "OwnElements.h"
#include "SystemCalls.h"

#include <pps/Log.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>

namespace voro::renderer {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// The sanitizer needs more than any medium.
constexpr rlim_t MostMemory = RLIM_INFINITY;
#else
constexpr rlim_t MostMemory = rlim_t{2} << 30;
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

bool limitFiles(const OwnElements &elements)
{
    Landlock landlock;
    landlock.allow("/", Landlock::Access::Read);
    for (const char *device : {"/dev/null", "/dev/zero", "/dev/full"}) {
        landlock.allow(device, Landlock::Access::Write);
    }
    for (const std::string &folder : elements.folders) {
        landlock.allow(folder.c_str(), Landlock::Access::Create);
    }
    if (!elements.unknown.empty()) {
        landlock.allow("/", Landlock::Access::Create);
        landlock.allow("/dev", Landlock::Access::Control);
    }
    landlock.allowConnections();
    if (std::getenv("DISPLAY")) {
        // The client library of the X server gives up when it may not try the server's abstract name.
        landlock.allowAbstractSockets();
    }
    return landlock.enforce();
}

} // namespace

void restrictProcess()
{
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    prctl(PR_SET_DUMPABLE, 0);
    // A file that has reached its limit fails the recording and nothing more.
    std::signal(SIGXFSZ, SIG_IGN);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_DATA, MostMemory);
    limit(RLIMIT_NOFILE, MostDescriptors);
}

void setOutliving(bool isOutliving)
{
    std::signal(SIGTERM, isOutliving ? SIG_IGN : SIG_DFL);
}

void confineProcess()
{
    const OwnElements elements = ownElements();
    for (const std::string &name : elements.unknown) {
        log::warn(log::Category::Worker, "files and devices are open to workers, for the element %s", name.c_str());
    }
    for (const std::string &folder : elements.folders) {
        log::warn(log::Category::Worker, "workers may write files in %s, for filesink", folder.c_str());
    }
    if (!limitFiles(elements)) {
        log::warn(log::Category::Worker, "this kernel does not limit access to files (Landlock)");
    }
    if (!limitSystemCalls(elements.unknown.empty() ? Devices::Closed : Devices::Open)) {
        log::warn(log::Category::Worker, "this kernel does not limit system calls (seccomp)");
    }
}

} // namespace voro::renderer
