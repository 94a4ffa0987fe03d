#include "MediaFiles.h"

#include "ListNames.h"

#include <fcntl.h>
#include <pps/FdPassing.h>
#include <renderer/common/FileRequest.h>
#include <renderer/common/TrackPosition.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

namespace voro::renderer {

namespace {

/** A worker that waits must not be taken for one that hangs. */
constexpr time_t LongestWait = 3;
constexpr size_t MostRequests = 64;
constexpr size_t LargestList = 4 << 20;
/** Of all the lists of a context, in all the ways to read them. */
constexpr size_t MostText = 32 << 20;

/** The captions, and the file with the right to draw at the X server. */
std::set<std::string> namedIn(const Settings &settings)
{
    std::set<std::string> paths;
    if (!settings.session.display.empty()) {
        paths.insert(settings.session.authority);
    }
    for (const auto &[track, captions] : settings.captions) {
        if (captions.medium.isLocal() && !captions.medium.path().empty()) {
            paths.insert(captions.medium.path());
        }
    }
    return paths;
}

/** Whether a file names others; what merely has some text in it, as a song's tags, does not. */
bool isList(const std::string &path, const LocalFile &file)
{
    constexpr size_t HeadSize = 4096;
    const std::string head = file.at(0, HeadSize);
    return !head.empty()
           && (Medium(path).isNamedLikePlaylist() || Medium::isPlaylistText(head) || Medium::isStreamIndex(head));
}

} // namespace

/** Which files a worker gets. */
class MediaFiles::Permission {
public:
    Permission(FileView::Shared view, bool hasNetwork) : m_view(std::move(view)), m_hasNetwork(hasNetwork) {}

    void setMedium(const std::string &path)
    {
        const std::lock_guard lock(m_mutex);
        m_medium = path;
    }
    void setOthers(std::set<std::string> paths)
    {
        const std::lock_guard lock(m_mutex);
        m_others = std::move(paths);
    }

    size_t size()
    {
        const std::lock_guard lock(m_mutex);
        return m_size;
    }
    void dropLists()
    {
        const std::lock_guard lock(m_mutex);
        m_lists.clear();
        m_size = 0;
    }

    /** Whether a list leads to the network. */
    bool needsNetwork()
    {
        const std::lock_guard lock(m_mutex);
        return std::ranges::any_of(m_lists, [](const auto &list) { return list.second->nameNetwork(); });
    }

    /** Opens a file if it may be handed over. It may wait for the disk. */
    LocalFile::Shared open(const std::string &path)
    {
        if (!isGiven(path)) {
            return std::make_shared<LocalFile>(EACCES);
        }
        LocalFile::Shared file = LocalFile::openAt(m_view->open(path, O_PATH | O_CLOEXEC));
        if (file->isOpen() && mayBeList(path)) {
            addList(path, *file);
        }
        return file;
    }

private:
    bool isGiven(const std::string &path)
    {
        std::vector<std::shared_ptr<const ListNames>> lists;
        {
            const std::lock_guard lock(m_mutex);
            if (path == m_medium || m_others.contains(path)) {
                return true;
            }
            for (const auto &[name, list] : m_lists) {
                lists.push_back(list);
            }
        }
        // A long search must not hold the lock.
        const bool isHidden = m_hasNetwork && path.find("/.") != path.npos;
        return !isHidden && std::ranges::any_of(lists, [&](const auto &list) { return list->contain(path); });
    }
    bool mayBeList(const std::string &path)
    {
        const std::lock_guard lock(m_mutex);
        const bool isNew = !m_lists.contains(path) && !m_others.contains(path);
        return isNew && (path == m_medium || Medium(path).isNamedLikePlaylist());
    }
    void addList(const std::string &path, const LocalFile &file)
    {
        if (!isList(path, file)) {
            return;
        }
        auto names = std::make_shared<const ListNames>(path, file.at(0, LargestList));
        const std::lock_guard lock(m_mutex);
        if (m_size + names->size() <= MostText) {
            m_size += names->size();
            m_lists.emplace(path, std::move(names));
        }
    }

    const FileView::Shared m_view;
    /** A worker with the network gets no hidden files that only a list names. */
    const bool m_hasNetwork;
    std::mutex m_mutex;
    std::string m_medium;
    std::set<std::string> m_others;
    std::map<std::string, std::shared_ptr<const ListNames>> m_lists;
    size_t m_size = 0;
};

MediaFiles::MediaFiles(pps::Broker &broker, pps::Fd socket, std::function<void()> onNetwork)
    : m_broker(broker),
      m_socket(std::move(socket)),
      m_onNetwork(std::move(onNetwork)),
      m_view(FileView::of(getpid())),
      m_permission(std::make_shared<Permission>(m_view, !m_onNetwork))
{
    m_broker.watch(m_socket.get(), [this] { receive(); });
}

MediaFiles::~MediaFiles()
{
    if (m_socket.isValid()) {
        m_broker.unwatch(m_socket.get());
    }
}

void MediaFiles::setOwner(pid_t owner)
{
    m_owner = owner;
    m_view = FileView::of(owner);
}

void MediaFiles::open(const requests::Open &request, int64_t id)
{
    const bool isFile = request.medium.isLocal() && !request.isRecording();
    m_permission = std::make_shared<Permission>(m_view, !m_onNetwork);
    m_permission->setMedium(isFile ? request.medium.path() : std::string());
    set(request.settings);
    if (isFile) {
        hand(request.medium.path(), id);
    }
}

void MediaFiles::set(const Settings &settings)
{
    m_permission->setOthers(namedIn(settings));
}

void MediaFiles::receive()
{
    std::array<std::byte, sizeof(int64_t) + MaximumPath> packet;
    pps::Fd passed;
    const ssize_t size = pps::receivePacket(m_socket.get(), packet, passed);
    if (size < 0 && errno == EAGAIN) {
        return;
    }
    int64_t id = 0;
    if (size <= static_cast<ssize_t>(sizeof id)) {
        // The worker has closed the socket or sent a malformed packet.
        m_broker.unwatch(m_socket.get());
        m_socket.reset();
        return;
    }
    std::memcpy(&id, packet.data(), sizeof id);
    m_memory.release();
    const std::string_view wanted(reinterpret_cast<const char *>(packet.data()) + sizeof id,
                                  static_cast<size_t>(size) - sizeof id);
    if (wanted.starts_with(MemoryPrefix)) {
        makeMemory(wanted.substr(MemoryPrefix.size()), id);
    } else {
        hand(std::string(wanted), id);
    }
}

void MediaFiles::hand(const std::string &path, int64_t id)
{
    if (m_requests.size() >= MostRequests) {
        answer(id, EAGAIN);
        return;
    }
    m_requests.push_back({m_permission, path, id});
    if (m_requests.size() == 1) {
        openNext();
    }
}

void MediaFiles::openNext()
{
    const auto file = std::make_shared<LocalFile::Shared>();
    const Request &request = m_requests.front();
    m_job = std::make_unique<DiskJob>(
        m_broker, m_owner,
        [permission = request.permission, path = request.path, file] {
            *file = permission->open(path);
            return Result();
        },
        Result(ErrorCode::SourceUnavailable, "the disk does not answer"),
        [this, file](const Result &result) {
            const auto ended = std::move(m_job);
            const Request done = std::move(m_requests.front());
            m_requests.pop_front();
            if (!m_requests.empty()) {
                openNext();
            }
            opened(done, result, *file);
        },
        LongestWait, file);
}

void MediaFiles::opened(const Request &request, const Result &result, const LocalFile::Shared &file)
{
    if (!result) {
        answer(request.id, ETIMEDOUT);
    } else if (!chargeForLists()) {
        answer(request.id, ENOMEM);
    } else if (m_onNetwork && request.permission->needsNetwork()) {
        // The callback may destroy this object.
        const auto onNetwork = m_onNetwork;
        onNetwork();
    } else {
        answer(request.id, file->error(), file->descriptor());
    }
}

/** Has the owner account for the lists that are kept; without room none is. */
bool MediaFiles::chargeForLists()
{
    const size_t size = m_permission->size();
    if (size == m_chargedSize) {
        return true;
    }
    m_charge.release();
    m_chargedSize = size;
    if (size == 0) {
        return true;
    }
    m_charge = m_broker.accounts().take(m_owner, pps::Resource::Memory, size);
    if (!m_charge.isValid()) {
        m_permission->dropLists();
        m_chargedSize = 0;
    }
    return m_charge.isValid();
}

void MediaFiles::makeMemory(std::string_view size, int64_t id)
{
    const auto bytes = parseNumber(size, 0, MemoryFiles::MostSize);
    const pps::Fd file = bytes ? m_memory.make(static_cast<size_t>(*bytes)) : pps::Fd();
    answer(id, file.isValid() ? 0 : ENOMEM, file.get());
}

void MediaFiles::answer(int64_t id, int error, int file)
{
    if (m_socket.isValid()) {
        pps::sendPacket(m_socket.get(), FileAnswer{id, error}.toBytes(), file);
    }
}

} // namespace voro::renderer
