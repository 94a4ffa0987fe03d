#pragma once

#include <pps/broker/Broker.h>
#include <renderer/common/Parameters.h>
#include <renderer/common/WorkerMessages.h>

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace voro::renderer {

/** The objects in which a context shows itself. */
class Folder {
public:
    /** Why it stopped; None means that it played to the end. */
    struct Ending {
        ErrorCode code;
        TrackPosition position;
    };

    /** Data of the application and its medium is charged to the application's process, the owner. */
    Folder(pps::Broker &broker, std::string path, pid_t owner)
        : m_broker(broker),
          m_path(std::move(path)),
          m_owner(owner)
    {}
    /** Removes the objects. */
    ~Folder();
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    const std::string &path() const { return m_path; }

    void setState(State state, Speed speed, const std::optional<Ending> &ending = {});
    /** Shows what was left as the will of an earlier folder: how it stopped there, and where. */
    struct Will {
        Ending ending;
        unsigned total = 0;
    };
    Will restore(std::string_view will, Speed speed);
    /** Changes the speed and nothing else: what else the state says is not written again. */
    void setSpeed(Speed speed);
    /** Tracks that are far from the current one are shown no longer; the current one always is. */
    void setQueue(unsigned current, unsigned total);
    /**
     * The metadata of a track, as attribute lines. When the owner cannot have so much, nothing is known of the track.
     */
    void setTrack(unsigned track, std::string_view lines);
    void setStatus(const events::Status &status, pps::Broker::Fence fence = pps::Broker::Fence::None);
    /** Another position, and the rest of the status as it is. */
    void setPosition(int64_t position);
    /**
     * Whether it plays into nothing, because no sound server answers; shown from the first time on. True when that is
     * new.
     */
    bool setSilent(bool isSilent);
    /** Input parameters; written only when they are others than before. False when the owner cannot have so much. */
    bool setInput(const Parameters &parameters);
    /** Parameters of a track, likewise. */
    bool setTrackParameters(unsigned track, const Parameters &parameters);

    /**
     * Shows that there is no medium. Every reader sees this before it sees the next medium, which may look the same.
     */
    void clearMedium(unsigned track);

private:
    void leaveWill();
    bool publish(const std::string &name, std::string_view lines, pps::Broker::Fence fence = pps::Broker::Fence::None,
                 pid_t payer = pps::Accounts::Services);
    bool publishChange(const std::string &name, const Parameters &before, const Parameters &now);
    void publishQueue(unsigned current, unsigned total, pps::Broker::Fence fence);
    void publishUnknownTrack(unsigned track, pps::Broker::Fence fence);
    void forgetTracks(unsigned first, unsigned last);
    void forgetFarTracks();
    std::string objectPath(const std::string &name) const { return m_path + '/' + name; }

    pps::Broker &m_broker;
    std::string m_path;
    pid_t m_owner;
    bool m_isSilent = false;
    Parameters m_input;
    /** The tracks that are shown. */
    std::set<unsigned> m_tracks;
    /** Whether the last object found room: otherwise the log has said so. */
    bool m_hasRoom = true;
    std::map<unsigned, Parameters> m_trackParameters;
    // The present content, for the will.
    bool m_isIdle = true;
    Speed m_speed;
    std::optional<Ending> m_ending;
    /** The version that shows the ending. */
    uint64_t m_shownBy = 0;
    TrackPosition m_position;
    events::Status m_status;
    unsigned m_total = 0;
};

} // namespace voro::renderer
