#include "Confinement.h"

#include "Landlock.h"
#include "Module.h"
#include "OwnElements.h"
#include "SystemCalls.h"

#include <glib.h>
#include <pps/Log.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

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

/** What stands in a variable of the environment, folder by folder. */
void addFrom(const char *variable, std::vector<std::string> &places)
{
    const std::string text = std::getenv(variable) ? std::getenv(variable) : "";
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find(':', start), text.size());
        places.push_back(text.substr(start, end - start));
        start = end + 1;
    }
}

/**
 * What libraries and plugins read. Of the user's own folders only those for fonts and plugins, and the keys to the
 * servers of sound and screen; media come as descriptors.
 */
std::vector<std::string> systemPlaces()
{
    std::vector<std::string> places{"/usr",
                                    "/lib",
                                    "/lib32",
                                    "/lib64",
                                    "/etc",
                                    "/sys",
                                    "/dev/null",
                                    "/dev/zero",
                                    "/dev/random",
                                    "/dev/urandom",
                                    "/dev/dri",
                                    "/proc/self",
                                    "/proc/cpuinfo",
                                    "/proc/meminfo",
                                    "/proc/stat",
                                    "/proc/version",
                                    "/proc/sys",
                                    "/var/cache/fontconfig",
                                    "/var/lib/ca-certificates",
                                    "/run/systemd/resolve",
                                    "/run/resolvconf",
                                    "/run/NetworkManager",
                                    moduleFolder()};
    for (const char *variable :
         {"GST_PLUGIN_PATH", "GST_PLUGIN_PATH_1_0", "GST_PLUGIN_SYSTEM_PATH", "GST_PLUGIN_SYSTEM_PATH_1_0",
          "LD_LIBRARY_PATH", "GIO_EXTRA_MODULES", "FONTCONFIG_PATH", "FONTCONFIG_FILE", "SSL_CERT_FILE", "SSL_CERT_DIR",
          "PULSE_CLIENTCONFIG", "PULSE_COOKIE"}) {
        addFrom(variable, places);
    }
    const std::string home = g_get_home_dir();
    const std::string config = g_get_user_config_dir();
    const std::string data = g_get_user_data_dir();
    for (const std::string &place : {home + "/.fonts", home + "/.fonts.conf", home + "/.pulse-cookie", home + "/.pulse",
                                     home + "/.Xauthority", config + "/fontconfig", config + "/pulse", data + "/fonts",
                                     data + "/gstreamer-1.0", std::string(g_get_user_cache_dir()) + "/fontconfig"}) {
        places.push_back(place);
    }
    return places;
}

bool limitFiles(const OwnElements &elements)
{
    Landlock landlock;
    for (const std::string &path : systemPlaces()) {
        landlock.allow(path.c_str(), Landlock::Access::Read);
    }
    for (const std::string &path : elements.files) {
        landlock.allow(path.c_str(), Landlock::Access::Read);
    }
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
