#include "Playlist.h"

#include "ListText.h"

#include <pps/Log.h>
#include <renderer/common/MemoryFile.h>
#include <renderer/common/OpenLocal.h>
#include <renderer/worker/playlist/Reader.h>
#include <renderer/worker/process/Module.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

constexpr size_t MostEntries = 10'000;
constexpr int MostPlaylists = 500;
constexpr int DeepestNesting = 16;
/** Shorter than the 15 s after which the service ends a worker that opens a local medium. */
constexpr guint LongestWait = 12'000;

bool exists(const std::string &path)
{
    return openLocal(path)->isOpen();
}

/** Whether a name needs no decoding: ASCII without percent signs and backslashes. */
bool isPlain(const std::string &name)
{
    return std::ranges::all_of(name, [](unsigned char c) { return c < 128 && c != '%' && c != '\\'; });
}

std::string unescaped(const std::string &text)
{
    const Owned<char> result(g_uri_unescape_string(text.c_str(), nullptr));
    return result ? result.get() : text;
}

/** The path of an entry: of the name as written and decoded in several ways the first that exists. */
std::string pathOf(const std::string &listed)
{
    if (isPlain(listed) || exists(listed)) {
        return listed;
    }
    std::string plain = unescaped(listed);
    if (exists(plain)) {
        return plain;
    }
    if (plain.find('\\') != std::string::npos) {
        // The list is from another system.
        std::ranges::replace(plain, '\\', '/');
        if (exists(plain)) {
            return plain;
        }
    }
    const Owned<char> narrow(g_convert(listed.c_str(), -1, "ISO-8859-1", "UTF-8", nullptr, nullptr, nullptr));
    return narrow && exists(narrow.get()) ? narrow.get() : listed;
}

Medium mediumOf(const char *uri)
{
    if (!gst_uri_has_protocol(uri, "file")) {
        return Medium(gst_uri_is_valid(uri) ? uri : pathOf(uri));
    }
    const Owned<char> path(g_filename_from_uri(uri, nullptr, nullptr));
    return Medium(path ? pathOf(path.get()) : uri);
}

/** The content of a file, of a very large one its beginning up to the end of a line. */
std::string contentOf(const std::string &path)
{
    std::string text = openLocal(path)->at(0, Fetch::Largest + 1);
    if (text.size() > Fetch::Largest) {
        text.resize(text.rfind('\n') + 1);
    }
    return text;
}

/** The same for all names of one list. */
std::string identityOf(const Medium &list)
{
    const std::string file = list.isLocal() ? openLocal(list.path())->identity() : std::string();
    return file.empty() ? list.uri() : file;
}

} // namespace

Playlist::Reading::~Reading()
{
    if (owner) {
        owner->m_reading = nullptr;
    }
}

void Playlist::read(const Medium &list, ListRead done)
{
    cancel();
    m_done = std::move(done);
    m_entries.clear();
    m_problem = {};
    m_read = 0;
    m_timer.reset(g_timeout_add(LongestWait, onTimeout, this));
    parse(std::make_shared<Trail>(Trail{list, identityOf(list), nullptr, 0}));
}

gboolean Playlist::onTimeout(gpointer self)
{
    auto *list = static_cast<Playlist *>(self);
    list->m_timer.forget();
    log::warn(log::Category::Worker, "a playlist takes too long and is played as far as it was read");
    const ListRead done = std::exchange(list->m_done, nullptr);
    list->cancel();
    list->m_done = done;
    const Result problem(ErrorCode::SourceUnavailable, "the playlist cannot be read in time");
    list->finish(list->m_entries.empty() ? problem : Result());
    return G_SOURCE_REMOVE;
}

void Playlist::cancel()
{
    m_done = nullptr;
    m_timer.reset();
    m_places.clear();
    m_fetch.cancel();
    if (m_reading) {
        std::exchange(m_reading, nullptr)->owner = nullptr;
    }
}

bool Playlist::leadsToItself(const Trail *trail, const std::string &identity)
{
    for (; trail; trail = trail->parent.get()) {
        if (trail->identity == identity) {
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
        const Medium &medium = place.entry.medium;
        if (!medium.isNamedLikePlaylist()) {
            m_entries.push_back(std::move(place.entry));
            continue;
        }
        const bool isTooMuch = place.trail->depth >= DeepestNesting || m_read >= MostPlaylists;
        std::string identity = identityOf(medium);
        if (isTooMuch || leadsToItself(place.trail.get(), identity)) {
            log::warn(log::Category::Worker,
                      "a playlist is left out: it contains itself, is nested too deeply, or there are too many");
            continue;
        }
        parse(std::make_shared<Trail>(Trail{medium, std::move(identity), place.trail, place.trail->depth + 1}));
        return;
    }
    finish(m_entries.empty() && !m_problem ? m_problem : Result());
}

void Playlist::parse(std::shared_ptr<const Trail> trail)
{
    ++m_read;
    const Medium &list = trail->list;
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

void Playlist::parseText(std::shared_ptr<const Trail> trail, std::string text)
{
    text = repairedList(std::move(text), trail->list);
    auto reading = std::make_unique<Reading>();
    reading->trail = std::move(trail);
    reading->copy = makeMemoryFile(std::string_view(text));
    if (!reading->copy.isValid()) {
        m_problem = {ErrorCode::OutOfMemory, "no room for the playlist"};
        proceed();
        return;
    }
    const std::string uri = "file://" + nameOf(reading->copy);
    start(std::move(reading), uri);
}

void Playlist::start(std::unique_ptr<Reading> reading, const std::string &uri)
{
    static const auto readPlaylist = functionOf<ReadPlaylist>("playlist", ReadPlaylistName);
    if (!readPlaylist) {
        finish({ErrorCode::UnsupportedMediaType, "this installation reads no playlists"});
        return;
    }
    const std::string place = reading->trail->list.uri();
    const std::string base = place.substr(0, place.rfind('/') + 1);
    reading->owner = this;
    m_reading = reading.get();
    const PlaylistListener listener{[](const char *entry, const char *title, void *data) {
                                        auto *current = static_cast<Reading *>(data);
                                        if (current->lines.size() < MostEntries) {
                                            current->lines.push_back({entry, title ? title : ""});
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
        const Medium &list = reading.trail->list;
        m_problem = {ErrorCode::UnsupportedMediaType, (list.isLocal() ? list.path() : list.uri()) + " is no playlist"};
    }
    const bool isFromNet = !reading.trail->list.isLocal();
    size_t localFiles = 0;
    for (auto line = reading.lines.rbegin(); line != reading.lines.rend(); ++line) {
        Medium medium = mediumOf(line->uri.c_str());
        if (isFromNet && medium.isLocal()) {
            ++localFiles;
        } else {
            m_places.push_front({{std::move(medium), line->title}, reading.trail});
        }
    }
    if (localFiles > 0) {
        m_problem = {ErrorCode::Permission, "a playlist from the net may not open files"};
        log::warn(log::Category::Worker, "%s: %zu are left out", m_problem.text.c_str(), localFiles);
    }
    proceed();
}

void Playlist::finish(const Result &result)
{
    m_timer.reset();
    m_places.clear();
    const ListRead done = std::exchange(m_done, nullptr);
    if (!done) {
        return;
    }
    const bool isEmpty = result && m_entries.empty();
    done(isEmpty ? Result(ErrorCode::ResourceCorrupted, "the playlist is empty") : result, std::move(m_entries));
}

} // namespace voro::renderer
