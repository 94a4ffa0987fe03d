#include "SystemPlaces.h"

#include "Module.h"
#include "SoundServer.h"

#include <glib.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace voro::renderer {

namespace {

/** Adds the folders in a variable of the environment. */
void addFrom(const char *variable, std::vector<std::string> &places)
{
    const std::string text = std::getenv(variable) ? std::getenv(variable) : "";
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find(':', start), text.size());
        places.push_back(text.substr(start, end - start));
        start = end + 1;
    }
}

} // namespace

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
                                    moduleFolder()};
    for (const char *variable :
         {"GST_PLUGIN_PATH", "GST_PLUGIN_PATH_1_0", "GST_PLUGIN_SYSTEM_PATH", "GST_PLUGIN_SYSTEM_PATH_1_0",
          "LD_LIBRARY_PATH", "GIO_EXTRA_MODULES", "FONTCONFIG_PATH", "FONTCONFIG_FILE", "SSL_CERT_FILE", "SSL_CERT_DIR",
          "PULSE_COOKIE"}) {
        addFrom(variable, places);
    }
    std::ranges::copy(soundConfigurationPlaces(), std::back_inserter(places));
    const std::string home = g_get_home_dir();
    const std::string config = g_get_user_config_dir();
    const std::string data = g_get_user_data_dir();
    for (const std::string &place : {home + "/.fonts", home + "/.fonts.conf", home + "/.pulse-cookie", home + "/.pulse",
                                     config + "/fontconfig", config + "/pulse", data + "/fonts",
                                     data + "/gstreamer-1.0", std::string(g_get_user_cache_dir()) + "/fontconfig"}) {
        places.push_back(place);
    }
    return places;
}

std::vector<std::string> networkPlaces()
{
    return {"/run/systemd/resolve", "/run/resolvconf", "/run/NetworkManager", "/run/avahi-daemon"};
}

std::vector<std::string> screenPlaces()
{
    return {ScreenServerPlace, std::string(g_get_home_dir()) + "/.Xauthority"};
}

} // namespace voro::renderer
