#include "HandedFiles.h"

#include <poll.h>
#include <pps/FdPassing.h>
#include <renderer/common/FileRequest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

namespace voro::renderer {

namespace {

constexpr std::chrono::seconds Moment{1};
/** This process's own memory files. */
constexpr std::string_view OwnFiles = "/proc/self/fd/";

} // namespace

LocalFile::Shared HandedFiles::open(const std::string &path, Freshness freshness)
{
    if (path.starts_with(OwnFiles)) {
        return LocalFile::open(path);
    }
    const std::lock_guard lock(m_mutex);
    const auto isOld = [now = Clock::now()](const Recent &recent) { return now - recent.time > Moment; };
    std::erase_if(m_recent, isOld);
    const auto found = std::ranges::find(m_recent, path, &Recent::path);
    if (found != m_recent.end() && freshness == Freshness::Recent) {
        return found->file;
    }
    if (found != m_recent.end()) {
        m_recent.erase(found);
    }
    const bool isExpected = path == m_expected;
    if (isExpected) {
        m_expected.clear();
    }
    Answer answer = isExpected ? receive(m_expectedId) : ask(path);
    auto file = answer.file.isValid() ? std::make_shared<LocalFile>(std::move(answer.file))
                                      : std::make_shared<LocalFile>(answer.error);
    m_recent.push_back({path, file, Clock::now()});
    return file;
}

pps::Fd HandedFiles::makeMemory(size_t size)
{
    const std::lock_guard lock(m_mutex);
    return ask(std::string(MemoryPrefix) + std::to_string(size)).file;
}

/** Waits for the file with a number. */
HandedFiles::Answer HandedFiles::receive(int64_t id)
{
    while (m_unasked.id != id) {
        pollfd readable{WorkerMediaSocket, POLLIN, 0};
        std::array<std::byte, sizeof(int64_t) + sizeof(int32_t) + 1> packet;
        pps::Fd file;
        poll(&readable, 1, -1);
        const ssize_t size = pps::receivePacket(WorkerMediaSocket, packet, file);
        if (size < 0 && errno == EAGAIN) {
            continue;
        }
        const auto answer =
            size > 0 ? FileAnswer::fromBytes(std::span(packet).first(static_cast<size_t>(size))) : std::nullopt;
        if (!answer) {
            return {id, EIO, {}};
        }
        Answer received{answer->id, answer->error, std::move(file)};
        if (!received.file.isValid() && received.error == 0) {
            received.error = EMFILE;
        }
        if (received.id == id) {
            return received;
        }
        if (received.id > 0) {
            // It came before somebody's question was answered.
            m_unasked = std::move(received);
        }
    }
    return std::exchange(m_unasked, {});
}

HandedFiles::Answer HandedFiles::ask(const std::string &wanted)
{
    const int64_t id = --m_lastId;
    std::vector<std::byte> packet(sizeof id + wanted.size());
    std::memcpy(packet.data(), &id, sizeof id);
    std::memcpy(packet.data() + sizeof id, wanted.data(), wanted.size());
    return pps::sendPacket(WorkerMediaSocket, packet) ? receive(id) : Answer{id, EIO, {}};
}

void HandedFiles::expect(const std::string &path, int64_t request)
{
    const std::lock_guard lock(m_mutex);
    m_recent.clear();
    m_expected = path;
    m_expectedId = request;
}

void HandedFiles::forget()
{
    const std::lock_guard lock(m_mutex);
    m_recent.clear();
}

} // namespace voro::renderer
