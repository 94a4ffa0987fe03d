#pragma once

#include "DeviceWatch.h"
#include "NextTrack.h"
#include "Reports.h"
#include "Track.h"

#include <renderer/worker/lookup/Fetch.h>
#include <renderer/worker/playlist/Playlist.h>

#include <functional>
#include <optional>
#include <string>

namespace voro::renderer {

/** Plays a queue as the service asks, and reports what happens. */
class Player {
public:
    using Answer = std::function<void(const Result &)>;

    Player(Playback &playback, Probe &probe, Reports::Send send);

    /** Opens a medium or a queue; the answer comes when it is known to play or not. */
    void open(const requests::Open &request, Answer answer);
    void close();
    Result play();
    void stop();
    Result setSpeed(Speed speed);
    Result seek(unsigned track, int64_t position);
    /** Whether something is played or will be as soon as it is opened. */
    bool isRunning() const { return (m_phase == Phase::Running || m_phase == Phase::Starting) && !m_speed.isPaused(); }
    /** In the current track. */
    int64_t position() const;
    /** Takes over what the application set. */
    void apply(const Settings &settings, const Outputs &outputs);

private:
    enum class Phase {
        Closed,
        /** A medium is being opened, to be ready. */
        Opening,
        /** Opened, but never played. */
        Ready,
        /** A medium is being opened, to be played. */
        Starting,
        Running,
        /** Stopped, or played to the end: the medium has to be opened again. */
        Stopped,
    };

    void onDecoded();
    void onEnded();
    void onAdvanced();
    void onPlaybackFailed(const Failure &failure);
    void onFailed(const Result &cause);
    void onTagged(const GstTagList *tags);
    void onChanged();
    void onBuffering(int percent);
    void onDeviceLost();
    static gboolean onStatusDue(gpointer self);
    static gboolean onOpenTimeout(gpointer self);

    /** Goes to a track, or to a later one when it does not play. */
    void openTrack(unsigned track, int64_t position);
    void loadTrack(unsigned track, int64_t position);
    void load();
    /** Opens the current medium again where it is. */
    void reload();
    /** Passes a track over that does not play; false when nothing is left, which ends everything. */
    bool passOver(const Result &problem);
    void lookForPlaylist(const Result &result);
    void fail(const Result &result);
    /** The queue is over, with the track that was played last. */
    void complete(unsigned track, int64_t last);
    bool seekTo(int64_t position, Speed speed);
    Result replay();
    Result begin();
    void proceed();
    void holdAtBeginning();
    /** Has the device watched while something is played to it and the application wants that. */
    void watchDevice();
    void end(Phase phase);
    void finishOpen(const Result &result);
    void prepareNext();
    bool isOpening() const { return m_phase == Phase::Opening || m_phase == Phase::Starting; }
    bool isOpen() const { return m_phase == Phase::Ready || m_phase == Phase::Running; }
    CaptionChoice captions(unsigned track) const;
    const Medium &medium(unsigned track) const { return m_queue.entry(track).medium; }
    std::string uri(unsigned track) const { return medium(track).uri(); }
    void reportCurrent();
    void reportTrack();
    void reportStatus();
    void restartStatusTimer();

    Reports m_reports;
    Playback &m_playback;
    Playlist m_playlist;
    Fetch m_fetch;
    DeviceWatch m_device{[this] { onDeviceLost(); }};
    Queue m_queue;
    NextTrack m_next;
    Settings m_settings;
    Outputs m_outputs;
    Speed m_speed;
    Phase m_phase = Phase::Closed;
    Answer m_answer;
    Track m_track{{.measured = [this] { onChanged(); }, .coverMade = [this] { reportTrack(); }}};
    bool m_isForward = true;
    /** Volume or equalizer were changed while the queue played, and probably will be again. */
    bool m_isChanging = false;
    /** The track that was just played to its end, until the next one is decoded. */
    struct Played {
        unsigned track;
        int64_t end;
    };
    std::optional<Played> m_played;
    /** The medium comes from a server that has not shown yet what it is. */
    bool m_mayBePlaylist = false;
    /** Where the next play begins, or where it stands while nothing plays. */
    int64_t m_position = 0;
    int m_bufferLevel = 100;
    MainLoopSource m_statusTimer;
    MainLoopSource m_openTimer;
};

} // namespace voro::renderer
