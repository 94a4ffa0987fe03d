#pragma once

#include "AudioBin.h"
#include "Failure.h"
#include "Gst.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace voro::renderer {

/** One playbin with its sinks; it is used for medium after medium. Times are milliseconds, rates thousandths. */
class Pipeline {
public:
    struct Events {
        /** The medium was opened and its first sound is decoded. */
        std::function<void()> decoded;
        std::function<void()> ended;
        std::function<void(const Result &)> failed;
        /** It failed because nobody knows what the medium is. */
        std::function<void(const Result &)> unrecognized;
        std::function<void(const GstTagList *)> tagged;
        /** The duration or something like it became another one. */
        std::function<void()> changed;
        /** How full the buffer is, in percent. */
        std::function<void(int)> buffering;
    };

    explicit Pipeline(Events events);
    ~Pipeline();
    Pipeline(const Pipeline &) = delete;
    Pipeline &operator=(const Pipeline &) = delete;

    AudioBin &audio() { return m_audio; }

    /** Opens a medium without playing it; decoded, failed or unrecognized follows. */
    void load(const std::string &uri, bool isAudible);
    /** Plays on, or begins to. */
    void run();
    /** Holds where it is. */
    void hold();
    /** Lets go of the medium. */
    void unload();

    /** Goes to a time at a rate. While one seek is on its way the next one waits, and only the last one is made. False
        when the medium does not allow it. */
    bool seek(int64_t time, int rate);
    int rate() const { return m_rate; }

    /** The time that is heard now, or the one that a seek goes to. */
    int64_t position() const;
    /** 0 when it is not known. */
    int64_t duration() const;
    bool isSeekable() const;

private:
    struct Target {
        int64_t time;
        int rate;
    };

    static void onElementAdded(GstBin *bin, GstBin *parent, GstElement *element, gpointer self);
    static void onStreamsKnown(GstElement *element, gpointer self);
    static gboolean onMessage(GstBus *bus, GstMessage *message, gpointer self);
    void handle(GstMessage *message);
    /** Brings the playbin to the state that it is to have, or nearer. */
    void settle();
    bool seekNow(const Target &target);
    void finishSeek();
    void checkStreams();

    Events m_events;
    AudioBin m_audio;
    Owned<GstElement> m_playbin;
    Source m_watch;
    int m_rate = 1000;
    bool m_isHeld = true;
    /** The seek that is on its way, and the one that waits for its end. */
    std::optional<Target> m_seeking;
    std::optional<Target> m_next;
};

} // namespace voro::renderer
