#include "SoundServer.h"

#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

namespace voro::renderer {

namespace {

constexpr std::string_view Scheme = "unix:";
constexpr const char *Variable = "PULSE_SERVER";
/** Of a server for all users. */
constexpr const char *SharedFolder = "/run/pulse";

std::string variable(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

/** The server that a configuration names. */
std::string serverIn(const std::string &configuration)
{
    std::ifstream file(configuration);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string name;
        std::string sign;
        std::string server;
        if (words >> name >> sign && name == "default-server" && sign == "="
            && std::getline(words >> std::ws, server)) {
            return server;
        }
    }
    return {};
}

/** The first configuration that there is counts alone. */
std::string configuredServer()
{
    for (const std::string &place :
         {variable("PULSE_CLIENTCONFIG"), std::string(g_get_user_config_dir()) + "/pulse/client.conf",
          std::string("/etc/pulse/client.conf")}) {
        if (access(place.c_str(), F_OK) == 0) {
            return serverIn(place);
        }
    }
    return {};
}

/** The folders where servers usually have their sockets. */
std::vector<std::string> usualFolders()
{
    std::vector<std::string> folders;
    if (const std::string own = variable("PULSE_RUNTIME_PATH"); !own.empty()) {
        folders.push_back(own);
    } else if (const std::string runtime = variable("XDG_RUNTIME_DIR"); !runtime.empty()) {
        folders.push_back(runtime + "/pulse");
    }
    folders.emplace_back(SharedFolder);
    return folders;
}

} // namespace

std::vector<std::string> soundServers()
{
    const std::string named = variable(Variable);
    std::istringstream words(named.empty() ? configuredServer() : named);
    std::vector<std::string> servers;
    for (std::string server; words >> server;) {
        // In front may stand the machine for which it holds, in braces.
        server.erase(0, server.starts_with('{') ? server.find('}') + 1 : 0);
        servers.push_back(server.starts_with(Scheme) ? server.substr(Scheme.size()) : server);
    }
    return servers;
}

void nameSoundServer()
{
    if (!soundServers().empty()) {
        return;
    }
    std::string names;
    for (const std::string &folder : usualFolders()) {
        names.append(names.empty() ? "" : " ").append(Scheme).append(folder).append("/native");
    }
    setenv(Variable, names.c_str(), 1);
}

bool isSoundServerFar()
{
    return !std::ranges::all_of(soundServers(), [](const std::string &server) { return server.starts_with('/'); });
}

std::vector<std::string> soundServerPlaces()
{
    std::vector<std::string> places = usualFolders();
    // Where there is none yet a server will make its socket in it.
    if (places.front() != SharedFolder) {
        mkdir(places.front().c_str(), 0700);
    }
    for (const std::string &server : soundServers()) {
        // A server that starts anew makes its socket again; but what else is in the folder must be the server's, too.
        const std::filesystem::path folder = std::filesystem::path(server).parent_path();
        if (server.starts_with('/')) {
            places.push_back(folder.filename().string().starts_with("pulse") ? folder.string() : server);
        }
    }
    return places;
}

} // namespace voro::renderer
