#pragma once

#include "Piece.h"
#include "Succession.h"

#include <renderer/common/Names.h>
#include <renderer/common/Speed.h>
#include <renderer/worker/gst/Failure.h>
#include <renderer/worker/media/TrackInfo.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace voro::renderer {

/** Plays one medium after the other to its outputs. Times are milliseconds. */
class Playback {
public:
    struct Events {
        /** The medium was opened and its first sound or picture is decoded. */
        std::function<void()> decoded;
        std::function<void()> ended;
        /** The medium that was named as the next one plays now. */
        std::function<void()> advanced;
        std::function<void(const Failure &)> failed;
        std::function<void(const GstTagList *)> tagged;
        /** The duration or something like it became another one. */
        std::function<void()> changed;
        /** How full the buffer is, in percent. */
        std::function<void(int)> buffering;
    };

    Playback() = default;
    virtual ~Playback() = default;
    Playback(const Playback &) = delete;
    Playback &operator=(const Playback &) = delete;

    /**
     * Sets the listener; its functions are called from the main loop. Before, there are neither threads nor
     * descriptors, so that a process may be forked.
     */
    virtual void listen(Events events) { m_events = std::move(events); }

    /** Connects to the sound server, while there is time and nothing is loaded, so that no medium waits for that. */
    virtual void connectSound() = 0;
    /** From 0 to 100. */
    virtual void setVolume(long percent) = 0;
    virtual void setPreset(Preset preset) = 0;
    /** Whether what plays was decoded, with its volume and preset, long before it is heard. */
    virtual bool isFarAhead() const = 0;
    /** Which part of the pictures is shown. */
    virtual void setSource(const Rectangle &part) = 0;

    /**
     * Opens a medium without playing it; `decoded` or `failed` follows. False when it does not play such media, and
     * nothing follows.
     */
    virtual bool load(const Piece &piece) = 0;
    /** Begins to open what is probably loaded next, without any event. It is given up when it is not loaded soon. */
    virtual void loadAhead(const Piece &piece) = 0;
    /** Plays on, or begins to. */
    virtual void run() = 0;
    /** Holds where it is. */
    virtual void hold() = 0;
    /** Lets go of the medium. */
    virtual void unload() = 0;
    virtual bool hasBegun() const = 0;

    /** Which of the medium's captions are shown, if any. Others from elsewhere have to be loaded with the medium. */
    virtual void selectCaptions(const CaptionChoice &captions) = 0;

    /** The medium that follows without a gap. This one does not end before the next one is known. */
    virtual Succession &succession() = 0;

    /**
     * Goes to a time, and on from there at a speed. While one seek is on its way the next one waits, and only the last
     * one is made. False when the medium does not allow it.
     */
    virtual bool seek(int64_t time, Speed speed) = 0;
    virtual Speed speed() const = 0;

    /** The time that is heard now, or the one that a seek goes to. */
    virtual int64_t position() const = 0;
    /** 0 when it is not known. */
    virtual int64_t duration() const = 0;
    /** Whether it is a file of sound in a common format. */
    virtual bool isCommonFile() const = 0;
    virtual bool isSeekable() const = 0;
    /** In Hz, 0 when not known. */
    virtual int sampleRate() const = 0;
    virtual Dimensions dimensions() const = 0;
    virtual CaptionInfo captions() const = 0;

    /** The sound server's device that is played to, empty while there is none. */
    virtual std::string device() const = 0;
    /** Whether it plays into nothing because no sound server answers. */
    virtual bool isSilent() const = 0;

protected:
    Events m_events;
};

} // namespace voro::renderer
