#pragma once

#include <renderer/common/Error.h>
#include <renderer/common/WorkerMessages.h>
#include <renderer/worker/media/Queue.h>
#include <renderer/worker/media/TrackInfo.h>

#include <functional>
#include <map>
#include <string>

namespace voro::renderer {

/** What a player tells the service, as event messages. */
class Reports {
public:
    using Send = std::function<void(const Event &event)>;

    explicit Reports(Send send) : m_send(std::move(send)) {}

    /** Forgets what it told of the former queue. */
    void reset() { m_tracks.clear(); }
    /** The service forgets the tracks that are far from the current one, and so does this. */
    void queue(unsigned current, unsigned total);
    /** Told only when it is something else than before. */
    void track(unsigned number, const std::string &uri, const TrackInfo &info);
    /** Tells of the tracks near the current one what their list says, until they are looked at. */
    void neighbours(const Queue &queue);
    /** Tells the log of a track that is passed over; of a long list's not of every one. */
    static void passedOver(unsigned track, const std::string &cause);
    void failed(const Result &result, unsigned track, int64_t position);
    void send(const Event &event) { m_send(event); }

private:
    Send m_send;
    std::map<unsigned, std::string> m_tracks;
};

} // namespace voro::renderer
