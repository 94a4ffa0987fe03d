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

/** The configuration's main file, by the rules of the server's library; empty when there is none. */
std::string configurationFile()
{
    if (const std::string named = variable("PULSE_CLIENTCONFIG"); !named.empty()) {
        return named;
    }
    const std::string own = variable("PULSE_CONFIG_PATH");
    std::vector<std::string> folders{own};
    if (own.empty()) {
        folders = {std::string(g_get_home_dir()) + "/.pulse", std::string(g_get_home_dir()) + "/.config/pulse"};
    }
    folders.emplace_back("/etc/pulse");
    for (const std::string &folder : folders) {
        if (const std::string file = folder + "/client.conf"; access(file.c_str(), F_OK) == 0) {
            return file;
        }
    }
    return {};
}

/** The folder beside the main file of a configuration with its parts. */
std::string folderOfParts(const std::string &main)
{
    return main + ".d";
}

/** The main file of a configuration and its parts, in their order. */
std::vector<std::string> filesOfConfiguration(const std::string &main)
{
    std::vector<std::string> parts;
    std::error_code error;
    std::filesystem::directory_iterator place(folderOfParts(main), error);
    for (; !error && place != end(place); place.increment(error)) {
        if (place->path().extension() == ".conf") {
            parts.push_back(place->path());
        }
    }
    std::ranges::sort(parts);
    parts.insert(parts.begin(), main);
    return parts;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view Blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    return text.substr(0, text.find_last_not_of(Blanks) + 1);
}

/** The server that the user's configuration names: the last one counts. */
std::string configuredServer()
{
    std::string server;
    const std::string main = configurationFile();
    for (const std::string &file : main.empty() ? std::vector<std::string>() : filesOfConfiguration(main)) {
        std::error_code error;
        std::ifstream lines;
        if (std::filesystem::is_regular_file(file, error)) {
            lines.open(file);
        }
        for (std::string line; std::getline(lines, line);) {
            line.erase(std::min(line.find_first_of("#;"), line.size()));
            const size_t sign = line.find('=');
            if (sign != line.npos && trimmed(std::string_view(line).substr(0, sign)) == "default-server") {
                server = trimmed(std::string_view(line).substr(sign + 1));
            }
        }
    }
    return server;
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
    std::istringstream words(variable(Variable));
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
    if (!variable(Variable).empty()) {
        return;
    }
    std::string names = configuredServer();
    if (names.empty()) {
        for (const std::string &folder : usualFolders()) {
            names.append(names.empty() ? "" : " ").append(Scheme).append(folder).append("/native");
        }
    }
    setenv(Variable, names.c_str(), 1);
}

std::vector<std::string> soundConfigurationPlaces()
{
    const std::string main = configurationFile();
    return main.empty() ? std::vector<std::string>() : std::vector<std::string>{main, folderOfParts(main)};
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
