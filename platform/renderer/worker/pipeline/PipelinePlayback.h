#pragma once

#include "AudioBin.h"
#include "Playback.h"
#include "Transport.h"

#include <renderer/worker/gst/Graph.h>
#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/media/TagPrecedence.h>

#include <cstdint>
#include <optional>

namespace voro::renderer {

/** What the ways to play have in common: a pipeline with an AudioBin in it, whose messages become events. */
class PipelinePlayback : public Playback {
public:
    void listen(Events events) override;
    void connectSound() override { m_audio.connectSound(); }
    void setVolume(long percent) override { m_audio.setVolume(percent); }
    void setPreset(Preset preset) override { m_audio.setPreset(preset); }
    bool isFarAhead() const override { return m_audio.isFarAhead() && hasBegun(); }
    void run() override;
    void hold() override;
    void unload() override;
    bool hasBegun() const override { return m_transport.hasBegun(); }
    Succession &succession() override { return m_succession; }
    bool seek(int64_t time, Speed speed) override { return m_transport.seek({time, speed}); }
    Speed speed() const override { return m_transport.speed(); }
    int64_t position() const override;
    int64_t duration() const override { return durationOf(m_pipeline.get()); }
    bool isSeekable() const override { return renderer::isSeekable(m_pipeline.get()); }
    int sampleRate() const override { return m_audio.sampleRate(); }
    std::string device() const override { return m_audio.device(); }
    bool isSilent() const override { return m_audio.isSilent(); }

    AudioBin &audio() { return m_audio; }
    Transport &transport() { return m_transport; }
    /** Whether nothing is decoded yet. */
    bool isOpening() const { return m_isOpening; }
    /** Whether a medium that failed while it played may play on in another way. */
    bool canPlayOn(const Failure &failure) const;

protected:
    PipelinePlayback(GstElement *pipeline, Succession &succession);

    GstElement *pipeline() const { return m_pipeline.get(); }
    /** A medium is being opened from now on. */
    void begin();
    /** Takes the pipeline out of use. */
    virtual void stop() = 0;
    virtual void handle(GstMessage *message);
    /** Handles the messages of this program's own bins and helpers. */
    virtual void handleNote(GstMessage *note) = 0;
    virtual void handleError(GstMessage *error) = 0;
    /** Lets go of what has played, when the next medium plays. */
    virtual void forgetPlayed() {}
    /** The first sound or picture is there. */
    void decoded();
    /** Drops the messages of a former medium. */
    void forgetMessages();

private:
    static GstBusSyncReply onPosted(GstBus *bus, GstMessage *message, gpointer self);
    bool isHandled(GstMessage *message) const;
    bool isUntrue(GstMessage *message) const;
    static gboolean onMessage(GstBus *bus, GstMessage *message, gpointer self);
    void handleTags(GstMessage *message);
    void handleStart(GstMessage *message);
    static gboolean onNextDue(gpointer self);
    int64_t untilNext() const;
    void advanceWhenHeard();
    bool advance();

    Owned<GstElement> m_pipeline;
    Graph m_graph{m_pipeline.get()};
    AudioBin m_audio;
    Succession &m_succession;
    Transport m_transport;
    MainLoopSource m_watch;
    TagPrecedence m_tags;
    bool m_isLoaded = false;
    bool m_isOpening = false;
    /** Counts loads, so that messages of a former medium are recognized. */
    unsigned m_load = 0;
    /** The streams of the medium that plays; those of the next one differ. */
    guint m_group = GST_GROUP_ID_INVALID;
    /** It plays another medium than was loaded. */
    bool m_hasAdvanced = false;
    /** Where the next medium begins, which went to the sound server and is not heard yet. */
    std::optional<SinkWatch::Boundary> m_next;
    /** What was reported last. */
    mutable int64_t m_position = 0;
    /** Runs until it is heard, while the medium plays. */
    MainLoopSource m_nextTimer;
    /** Why it does not play, if so. */
    Owned<GstMessage> m_failure;
};

} // namespace voro::renderer
