#pragma once

#include "Pipeline.h"

#include <renderer/common/Medium.h>

#include <functional>
#include <optional>
#include <string>

namespace voro::renderer {

/** Plays one medium as the service asks, and reports what happens. */
class Player {
public:
    struct Reports {
        /** An event's attribute lines, "msg" included. */
        std::function<void(const std::string &)> event;
    };
    using Answer = std::function<void(const Result &)>;

    struct Settings {
        int speed = 1000;
        guint interval = 1000;
        bool isAudible = true;
        long volume = 100;
        std::string preset;
        std::string repeat;
    };

    explicit Player(Reports reports);

    /** Opens a medium, as a playlist or as itself; the answer comes when it is known to play or not. */
    void open(const std::string &url, bool isPlaylist, std::optional<int64_t> position, Answer answer);
    void close();
    Result play();
    void stop();
    Result setSpeed(int speed);
    Result seek(int64_t position);

    Settings &settings() { return m_settings; }
    /** Applies what was changed in settings(), the speed excepted. */
    void apply();

private:
    enum class Phase {
        Closed,
        Opening,
        /** Opened, but never played. */
        Ready,
        /** Asked to play; the medium is being opened again. */
        Starting,
        Running,
        /** Stopped, or played to the end: the medium has to be opened again. */
        Stopped,
    };

    void onDecoded();
    void onEnded();
    void onFailed(const Result &result);
    void onUnrecognized(const Result &result);
    void onTagged(const GstTagList *tags);
    void onChanged();
    void onBuffering(int percent);
    static gboolean onStatusDue(gpointer self);
    static gboolean onOpenTimeout(gpointer self);

    void load();
    Result begin();
    void proceed();
    void end(Phase phase);
    void finishOpen(const Result &result);
    int64_t position() const;
    void reportQueue();
    void reportTrack();
    void reportStatus();
    void restartStatusTimer();

    Reports m_reports;
    Pipeline m_pipeline;
    Settings m_settings;
    Phase m_phase = Phase::Closed;
    Medium m_medium{""};
    Answer m_answer;
    Owned<GstTagList> m_tags;
    std::string m_lastTrack;
    /** Where the next play begins, or where it stands while nothing plays. */
    int64_t m_position = 0;
    int m_bufferLevel = 100;
    Source m_statusTimer;
    Source m_openTimer;
};

} // namespace voro::renderer
