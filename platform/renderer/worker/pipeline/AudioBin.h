#pragma once

#include "Ahead.h"
#include "DecodedSound.h"
#include "Piece.h"
#include "SinkWatch.h"

#include <renderer/common/Names.h>
#include <renderer/worker/gst/Gst.h>

#include <atomic>
#include <cstdint>
#include <string>

namespace voro::renderer {

/**
 * The audio sink of a pipeline: speed with the pitch kept, equalizer, volume and what is heard, behind a gate.
 *
 * While the gate is closed decoded sound waits in front of the sink, so that the sink opens no stream at the sound
 * server before there is something to play: a stream that waited there would sound late.
 */
class AudioBin {
public:
    /** The element message that the first decoded buffer behind a closed gate posts. */
    static constexpr char DecodedMessage[] = "voro-decoded";
    /** The element message of a stream that ends without such a buffer. */
    static constexpr char EmptyMessage[] = "voro-empty";

    AudioBin();
    ~AudioBin();
    AudioBin(const AudioBin &) = delete;
    AudioBin &operator=(const AudioBin &) = delete;

    GstElement *element() const { return m_bin.get(); }
    /**
     * Gives the bin, which must not be in use, a sink for a medium; one that plays into nothing in real time when it
     * shall not be heard or there is no sound server.
     */
    void resetSink(const Piece &piece);
    /** Whether much is handed to the sound server before it is heard. */
    bool isFarAhead() const { return m_isServerSink && m_ahead == Ahead::Much; }
    /** The last boundary that went to the sink. */
    SinkWatch::Boundary boundary() const { return m_sinkWatch.boundary(); }
    /** As SinkWatch says. */
    bool isExchangedElsewhere() const { return m_sinkWatch.isExchangedElsewhere(); }
    /**
     * Whether the kept connection to the sound server broke. That takes time to find out; the sink is good for nothing
     * then.
     */
    bool hasLostServer() const;
    /** Whether it plays into nothing because no sound server answers. */
    bool isSilent() const { return m_isSilent; }
    /** Has the bin, which must not be in use, get another sink next time. */
    void removeSink();
    /** Does so when the connection broke. */
    void removeLostSink();
    /**
     * Before the bin is in use: connects to the sound server, if that is what it would play to. Does not wait for it,
     * because a server that hangs keeps its callers waiting.
     */
    void connectSound();
    /** Before the bin is taken out of use: to connect to the sound server anew would take time with each medium. */
    void keepConnection();

    /** Has all that was decoded go on. The decoding thread calls it before it waits for the next medium. */
    void passOn() { m_decoded.passOn(); }

    void closeGate();
    void openGate();
    bool isOpen() const { return m_gateProbe == 0; }

    /** From 0 to 100. Holds for what has not gone to the sink, like the preset. */
    void setVolume(long percent);
    void setPreset(Preset preset);

    /** The sound server's device that is played to, empty while there is none. */
    std::string device() const;
    /** Whether an object is the sink or a part of it. */
    bool isSink(GstObject *object) const;
    /** The rate of the decoded sound in Hz, 0 while not known. */
    int sampleRate() const;

private:
    static GstPadProbeReturn onDecoded(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    static GstPadProbeReturn onQuery(GstPad *pad, GstPadProbeInfo *info, gpointer self);

    /** How much is decoded before it is needed. */
    void decodeAhead(GstClockTime time);
    void addSink(bool isAudible);
    void addServerSink(GstElement *sink);
    void addToBin(GstElement *sink);
    static gpointer connect(gpointer self);
    void addTempo();
    void removeTempo();

    Owned<GstElement> m_bin;
    // Parts of the bin, owned by it.
    GstElement *m_queue;
    GstElement *m_filter;
    GstElement *m_tempo = nullptr;
    GstElement *m_equalizer;
    GstElement *m_volume;
    /** What all elements behind the first conversion have. */
    Owned<GstCaps> m_format;
    GstElement *m_sink = nullptr;
    bool m_isServerSink = false;
    bool m_isSilent = false;
    Ahead m_ahead = Ahead::Little;
    Owned<GstPad> m_gate;
    Owned<GstPad> m_input;
    /** What can be put in, whichever the sink is. */
    Owned<GstCaps> m_accepted;
    gulong m_gateProbe = 0;
    DecodedSound m_decoded;
    SinkWatch m_sinkWatch;
    /** Read by streaming threads. */
    std::atomic<bool> m_awaitsDecoded = false;
    /** The speed was another one: what changed it has garbage in its first samples when it is started again. */
    std::atomic<bool> m_isStretched = false;
};

} // namespace voro::renderer
