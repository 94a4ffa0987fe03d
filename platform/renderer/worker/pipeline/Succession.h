#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

namespace voro::renderer {

/** The medium that follows: a streaming thread asks for it, the main loop answers. */
class Succession {
public:
    /** It will be known soon; who asks waits. */
    void setUnknown() { set(std::nullopt, false); }
    /** The URI of the next medium; nothing comes when it is empty. */
    void set(const std::string &uri) { set(uri, false); }

    /** The next URI, waited for. Then the one after it is unknown. */
    std::string take()
    {
        std::unique_lock lock(m_mutex);
        m_known.wait(lock, [this] { return m_uri.has_value(); });
        std::string uri = *m_uri;
        if (!uri.empty()) {
            m_uri.reset();
            m_isTaken = true;
        }
        return uri;
    }
    /** Whether a medium was taken that the main loop does not know of yet. */
    bool isTaken()
    {
        const std::lock_guard lock(m_mutex);
        return m_isTaken;
    }
    /** Releases a waiting thread, and forgets a medium that was taken. */
    void release() { set(std::string(), true); }
    /** The medium that was taken plays now. */
    void advance()
    {
        const std::lock_guard lock(m_mutex);
        m_isTaken = false;
    }

private:
    void set(std::optional<std::string> uri, bool isForgotten)
    {
        const std::lock_guard lock(m_mutex);
        m_isTaken = m_isTaken && !isForgotten;
        if (!m_isTaken) {
            m_uri = std::move(uri);
            m_known.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_known;
    std::optional<std::string> m_uri = std::string();
    bool m_isTaken = false;
};

} // namespace voro::renderer
