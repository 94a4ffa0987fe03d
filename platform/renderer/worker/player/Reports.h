#pragma once

#include <renderer/common/Error.h>
#include <renderer/common/WorkerMessages.h>
#include <renderer/worker/media/Queue.h>
#include <renderer/worker/media/TrackInfo.h>

#include <functional>
#include <map>
#include <string>

namespace voro::renderer {

/** The events of a player or recorder for the service. */
class Reports {
public:
    using Send = std::function<void(const Event &event)>;

    explicit Reports(Send send) : m_send(std::move(send)) {}

    /** Forgets what it reported of the former queue. */
    void reset() { m_tracks.clear(); }
    /** The service forgets the tracks that are far from the current one, and so does this. */
    void queue(unsigned current, unsigned total);
    /** Reported only when something changed. */
    void track(unsigned number, const std::string &uri, const TrackInfo &info);
    /** Reports the tracks near the current one by the titles in their list, until they are probed. */
    void neighbours(const Queue &queue);
    /** Logs that a track is passed over, of a long list the first ones. */
    static void logPassedOver(unsigned track, const std::string &cause);
    void failed(const Result &result, unsigned track, int64_t position);
    void send(const Event &event) { m_send(event); }

private:
    Send m_send;
    std::map<unsigned, std::string> m_tracks;
};

} // namespace voro::renderer
