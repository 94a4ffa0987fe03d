#include "HandedFiles.h"

#include <poll.h>
#include <pps/FdPassing.h>
#include <renderer/common/FileRequest.h>

#include <algorithm>
#include <array>
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
    Lock lock(m_mutex);
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
    const int64_t medium = m_expectedId;
    Answer answer = isExpected ? receive(medium, lock) : ask(path, lock);
    auto file = answer.file.isValid() ? std::make_shared<LocalFile>(std::move(answer.file))
                                      : std::make_shared<LocalFile>(answer.error);
    // The next medium may be the same file, and is to be opened anew.
    if (medium == m_expectedId) {
        m_recent.push_back({path, file, Clock::now()});
    }
    return file;
}

pps::Fd HandedFiles::makeMemory(size_t size)
{
    Lock lock(m_mutex);
    return ask(std::string(MemoryPrefix) + std::to_string(size), lock).file;
}

/** Waits for the answer with a number. */
HandedFiles::Answer HandedFiles::receive(int64_t id, Lock &lock)
{
    for (;;) {
        const auto found = std::ranges::find(m_answers, id, &Answer::id);
        if (found != m_answers.end()) {
            Answer answer = std::move(*found);
            m_answers.erase(found);
            return answer;
        }
        const bool isSuperseded = id > 0 && id < m_expectedId;
        if (m_hasEnded || isSuperseded) {
            return {id, EIO, {}};
        }
        if (m_isReading) {
            m_hasCome.wait(lock);
            continue;
        }
        m_isReading = true;
        lock.unlock();
        Answer answer = readAnswer();
        lock.lock();
        m_isReading = false;
        m_hasEnded = answer.id == 0;
        if (answer.id < 0 || answer.id >= m_expectedId) {
            m_answers.push_back(std::move(answer));
        }
        m_hasCome.notify_all();
    }
}

/** Waits for the next answer; its number is 0 at the end. */
HandedFiles::Answer HandedFiles::readAnswer()
{
    pollfd readable{WorkerMediaSocket, POLLIN, 0};
    std::array<std::byte, sizeof(int64_t) + sizeof(int32_t) + 1> packet;
    pps::Fd file;
    ssize_t size = -1;
    do {
        poll(&readable, 1, -1);
        size = pps::receivePacket(WorkerMediaSocket, packet, file);
    } while (size < 0 && errno == EAGAIN);
    const auto answer =
        size > 0 ? FileAnswer::fromBytes(std::span(packet).first(static_cast<size_t>(size))) : std::nullopt;
    if (!answer) {
        return {};
    }
    const int error = answer->error == 0 && !file.isValid() ? EMFILE : answer->error;
    return {answer->id, error, std::move(file)};
}

HandedFiles::Answer HandedFiles::ask(const std::string &wanted, Lock &lock)
{
    const int64_t id = --m_lastId;
    std::vector<std::byte> packet(sizeof id + wanted.size());
    std::memcpy(packet.data(), &id, sizeof id);
    std::memcpy(packet.data() + sizeof id, wanted.data(), wanted.size());
    return pps::sendPacket(WorkerMediaSocket, packet) ? receive(id, lock) : Answer{id, EIO, {}};
}

void HandedFiles::expect(const std::string &path, int64_t request)
{
    const std::lock_guard lock(m_mutex);
    m_recent.clear();
    m_expected = path;
    m_expectedId = request;
    std::erase_if(m_answers, [request](const Answer &answer) { return answer.id > 0 && answer.id < request; });
    m_hasCome.notify_all();
}

void HandedFiles::forget()
{
    const std::lock_guard lock(m_mutex);
    m_recent.clear();
}

} // namespace voro::renderer
