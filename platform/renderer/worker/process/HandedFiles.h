#pragma once

#include <renderer/common/OpenLocal.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace voro::renderer {

/**
 * Gets files from the daemon, which hands over what this worker's context may read, and files in memory. May be used by
 * every thread.
 */
class HandedFiles {
public:
    LocalFile::Shared open(const std::string &path, Freshness freshness);
    /** A file in memory of that size, invalid when the daemon refuses it. */
    pps::Fd makeMemory(size_t size);
    /** Announces a path whose file the daemon sends unasked, with this request. */
    void expect(const std::string &path, int64_t request);
    /** Closes the files that are kept for being opened again; one in use stays open. */
    void forget();

private:
    using Clock = std::chrono::steady_clock;
    struct Recent {
        std::string path;
        LocalFile::Shared file;
        Clock::time_point time;
    };

    struct Answer {
        int64_t id = 0;
        int error = 0;
        pps::Fd file;
    };

    using Lock = std::unique_lock<std::mutex>;
    Answer ask(const std::string &wanted, Lock &lock);
    Answer receive(int64_t id, Lock &lock);
    Answer readAnswer();

    std::mutex m_mutex;
    /** One thread reads what comes, for all that wait. */
    bool m_isReading = false;
    std::condition_variable m_hasCome;
    bool m_hasEnded = false;
    std::string m_expected;
    int64_t m_expectedId = 0;
    int64_t m_lastId = 0;
    /** What has come and nobody has taken yet: the medium that was handed over last, and what others wait for. */
    std::vector<Answer> m_answers;
    /** To open a medium takes several looks at it. */
    std::vector<Recent> m_recent;
};

} // namespace voro::renderer
