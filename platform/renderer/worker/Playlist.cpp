#include "Playlist.h"

#include "playlist/Reader.h"

#include <dlfcn.h>
#include <renderer/common/Medium.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <utility>

namespace voro::renderer {

namespace {

constexpr size_t MostEntries = 10'000;
constexpr int MostPlaylists = 500;
constexpr int DeepestNesting = 16;
constexpr std::string_view Mark = "\xef\xbb\xbf";

/** The module's place beside the worker, in an installation as in the build tree. */
std::string modulePath()
{
    const Owned<char> program(g_file_read_link("/proc/self/exe", nullptr));
    const Owned<char> folder(g_path_get_dirname(program.get()));
    return std::string(folder.get()) + "/" VORO_MODULES "/playlist.so";
}

ReadPlaylist reader()
{
    static void *const module = dlopen(modulePath().c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) {
        std::fprintf(stderr, "voro-renderer: %s\n", dlerror());
        return nullptr;
    }
    return reinterpret_cast<ReadPlaylist>(dlsym(module, ReadPlaylistName));
}

bool exists(const std::string &path)
{
    return access(path.c_str(), F_OK) == 0;
}

std::string unescaped(const std::string &text)
{
    const Owned<char> result(g_uri_unescape_string(text.c_str(), nullptr));
    return result ? result.get() : text;
}

/** The path of an entry of a list, which says escaped or not, in which alphabet it likes, what the file is called. */
std::string pathOf(const std::string &listed)
{
    if (exists(listed)) {
        return listed;
    }
    if (std::string plain = unescaped(listed); exists(plain)) {
        return plain;
    }
    const Owned<char> narrow(g_convert(listed.c_str(), -1, "ISO-8859-1", "UTF-8", nullptr, nullptr, nullptr));
    return narrow && exists(narrow.get()) ? narrow.get() : listed;
}

/** An entry as an input URL. */
std::string inputUrl(const char *uri)
{
    if (!gst_uri_has_protocol(uri, "file")) {
        return gst_uri_is_valid(uri) ? uri : pathOf(uri);
    }
    const Owned<char> path(g_filename_from_uri(uri, nullptr, nullptr));
    return path ? pathOf(path.get()) : uri;
}

/** Whether a line of the format with "File1=" says something else than a place. */
bool isKeyword(const std::string &line)
{
    constexpr std::array Keywords{"title", "length", "numberofentries", "version"};
    return line.find('=') != std::string::npos && std::any_of(Keywords.begin(), Keywords.end(), [&](const char *word) {
               return g_ascii_strncasecmp(line.c_str(), word, strlen(word)) == 0;
           });
}

/** A line of a list with its place made absolute, so that the list may be read from elsewhere. */
std::string absoluteLine(const std::string &line, const Medium &list)
{
    // "File1=" in the one format, nothing in the other.
    const bool isNamed = g_ascii_strncasecmp(line.c_str(), "file", 4) == 0 && line.find('=') != std::string::npos;
    const size_t start = isNamed ? line.find('=') + 1 : 0;
    const std::string place = line.substr(start);
    const bool isComment = place.empty() || place[0] == '#' || place[0] == '[' || (!isNamed && isKeyword(line));
    const Owned<char> scheme(g_uri_parse_scheme(place.c_str()));
    const bool isLocalPath = list.isLocal() && place[0] == '/';
    if (isComment || isLocalPath || (scheme && place.find("://") != std::string::npos)) {
        return line;
    }
    if (list.isLocal()) {
        const std::string &path = list.path();
        return line.substr(0, start) + path.substr(0, path.rfind('/') + 1) + place;
    }
    const Owned<char> escaped(g_uri_escape_string(place.c_str(), "/?&=;+%", FALSE));
    const Owned<char> joined(gst_uri_join_strings(list.uri().c_str(), escaped.get()));
    return line.substr(0, start) + (joined ? joined.get() : escaped.get());
}

std::string absoluteLines(const std::string &text, const Medium &list)
{
    std::string result;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        result += absoluteLine(text.substr(start, end - start), list) + '\n';
        start = end + 1;
    }
    return result;
}

std::string contentOf(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

Playlist::Reading::~Reading()
{
    if (copy >= 0) {
        close(copy);
    }
    if (owner) {
        owner->m_reading = nullptr;
    }
}

void Playlist::read(const std::string &url, Done done)
{
    cancel();
    m_done = std::move(done);
    m_entries.clear();
    m_problem = {};
    m_read = 0;
    parse(std::make_shared<Trail>(Trail{url, nullptr, 0}));
}

void Playlist::cancel()
{
    m_done = nullptr;
    m_places.clear();
    m_fetch.cancel();
    if (m_reading) {
        std::exchange(m_reading, nullptr)->owner = nullptr;
    }
}

bool Playlist::leadsToItself(const Trail *trail, const std::string &url)
{
    for (; trail; trail = trail->parent.get()) {
        if (trail->url == url) {
            return true;
        }
    }
    return false;
}

/** Goes through the places in their order; a playlist among them is replaced by what is in it. */
void Playlist::proceed()
{
    while (!m_places.empty() && m_entries.size() < MostEntries) {
        Place place = std::move(m_places.front());
        m_places.pop_front();
        if (!Medium(place.entry.url).isNamedLikePlaylist()) {
            m_entries.push_back(std::move(place.entry));
            continue;
        }
        const bool isTooMuch = place.trail->depth >= DeepestNesting || m_read >= MostPlaylists;
        if (isTooMuch || leadsToItself(place.trail.get(), place.entry.url)) {
            std::fprintf(stderr, "voro-renderer: a playlist that leads to itself is left out\n");
            continue;
        }
        parse(std::make_shared<Trail>(Trail{place.entry.url, place.trail, place.trail->depth + 1}));
        return;
    }
    finish(m_entries.empty() && !m_problem ? m_problem : Result());
}

void Playlist::parse(std::shared_ptr<const Trail> trail)
{
    ++m_read;
    const Medium list(trail->url);
    if (Result problem = list.check(); !problem) {
        m_problem = std::move(problem);
        proceed();
    } else if (list.isLocal()) {
        parseText(std::move(trail), contentOf(list.path()));
    } else {
        m_fetch.get(list.uri(), [this, trail](const Result &result, std::string content) {
            if (result) {
                parseText(trail, std::move(content));
            } else {
                m_problem = result;
                proceed();
            }
        });
    }
}

/** Reads a list as it was meant: without a byte order mark, in UTF-8, with its head line. */
void Playlist::parseText(std::shared_ptr<const Trail> trail, std::string text)
{
    if (text.starts_with(Mark)) {
        text.erase(0, Mark.size());
    }
    if (!g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)) {
        gsize size = 0;
        const Owned<char> wide(
            g_convert(text.data(), static_cast<gssize>(text.size()), "UTF-8", "ISO-8859-1", nullptr, &size, nullptr));
        text.assign(wide ? wide.get() : "", wide ? size : 0);
    }
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first != std::string::npos && text[first] != '<') {
        text = absoluteLines(text, Medium(trail->url));
        if (text[first] != '[' && !text.starts_with("#EXTM3U")) {
            text.insert(0, "#EXTM3U\n");
        }
    }
    auto reading = std::make_unique<Reading>();
    reading->trail = std::move(trail);
    reading->copy = memfd_create("playlist", MFD_CLOEXEC);
    const bool isWritten =
        reading->copy >= 0 && write(reading->copy, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (!isWritten) {
        m_problem = {ErrorCode::OutOfMemory, "no room for the playlist"};
        proceed();
        return;
    }
    const std::string uri = "file:///proc/self/fd/" + std::to_string(reading->copy);
    start(std::move(reading), uri);
}

void Playlist::start(std::unique_ptr<Reading> reading, const std::string &uri)
{
    const ReadPlaylist readPlaylist = reader();
    if (!readPlaylist) {
        finish({ErrorCode::UnsupportedMediaType, "this installation reads no playlists"});
        return;
    }
    const std::string place = Medium(reading->trail->url).uri();
    const std::string base = place.substr(0, place.rfind('/') + 1);
    reading->owner = this;
    m_reading = reading.get();
    const PlaylistListener listener{[](const char *entry, const char *title, void *data) {
                                        auto *current = static_cast<Reading *>(data);
                                        if (current->entries.size() < MostEntries) {
                                            current->entries.push_back({entry, title ? title : ""});
                                        }
                                    },
                                    [](bool isList, void *data) {
                                        const std::unique_ptr<Reading> current(static_cast<Reading *>(data));
                                        if (Playlist *owner = std::exchange(current->owner, nullptr)) {
                                            owner->m_reading = nullptr;
                                            owner->take(*current, isList);
                                        }
                                    },
                                    reading.release()};
    readPlaylist(uri.c_str(), base.c_str(), listener);
}

void Playlist::take(const Reading &reading, bool isList)
{
    if (!isList) {
        m_problem = {ErrorCode::UnsupportedMediaType, reading.trail->url + " is no playlist"};
    }
    for (auto entry = reading.entries.rbegin(); entry != reading.entries.rend(); ++entry) {
        m_places.push_front({{inputUrl(entry->url.c_str()), entry->title}, reading.trail});
    }
    proceed();
}

void Playlist::finish(const Result &result)
{
    m_places.clear();
    const Done done = std::exchange(m_done, nullptr);
    if (!done) {
        return;
    }
    const bool isEmpty = result && m_entries.empty();
    done(isEmpty ? Result(ErrorCode::ResourceCorrupted, "the playlist is empty") : result, std::move(m_entries));
}

} // namespace voro::renderer
