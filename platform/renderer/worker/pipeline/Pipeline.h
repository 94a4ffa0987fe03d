#pragma once

#include "AudioBin.h"
#include "FilePipeline.h"
#include "Succession.h"
#include "VideoBin.h"

#include <renderer/worker/captions/CaptionFile.h>
#include <renderer/worker/captions/Captions.h>
#include <renderer/worker/gst/Failure.h>
#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/lookup/OpenMedia.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace voro::renderer {

/** Where a medium is played to. */
struct Outputs {
    bool isAudible = true;
    /** What the sound is for, empty when nobody said so. */
    std::string role;
    /** Whether pictures and captions are wanted, and where they are drawn. */
    bool hasVideo = false;
    bool hasCaptions = false;
    Window window;
    Window captionWindow;

    bool operator==(const Outputs &) const = default;
    /** Captions are drawn over the pictures when both have the same window. */
    bool areCaptionsOverVideo() const { return hasVideo && hasCaptions && window == captionWindow; }
};

/** Which captions a track is shown with. */
struct CaptionChoice {
    /** Captions from elsewhere, as an input URL; empty without. */
    std::string url;
    int index = 0;
    bool areShown = true;
};

/**
 * Plays a medium to its outputs; it is used for medium after medium. A file of sound in a common format is played the
 * short way, by a FilePipeline, everything else by a playbin, which also gets what the short way could not open. What
 * the playbin's own elements cannot open is read with libavformat; what cannot be read so either fails for the reason
 * that is most telling. Times are milliseconds, rates thousandths.
 */
class Pipeline {
public:
    struct Events {
        /** The medium was opened and its first sound or picture is decoded. */
        std::function<void()> decoded;
        std::function<void()> ended;
        /** The medium that was named as the next one plays now. */
        std::function<void()> advanced;
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

    AudioBin &audio() { return isShort() ? m_file.audio() : m_audio; }
    VideoBin &video() { return m_video; }
    /** From 0 to 100. */
    void setVolume(long percent);
    void setPreset(std::string_view preset);

    /** Opens a medium without playing it; decoded, failed or unrecognized follows. */
    void load(const std::string &uri, const CaptionChoice &captions, const Outputs &outputs);
    /** Begins to open what is probably loaded next; nothing is told of it before. Given up when that does not come. */
    void loadAhead(const std::string &uri, const Outputs &outputs);
    /** Plays on, or begins to. */
    void run();
    /** Holds where it is. */
    void hold();
    /** Lets go of the medium. */
    void unload();
    bool hasBegun() const { return m_hasBegun; }

    /** Which of the medium's captions are shown, if any. Others from elsewhere have to be loaded with the medium. */
    void selectCaptions(const CaptionChoice &captions);

    /** What comes without a gap after this medium. The medium does not end before it is known. */
    Succession &succession() { return m_succession; }

    /**
     * Goes to a time at a rate. While one seek is on its way the next one waits, and only the last one is made. False
     * when the medium does not allow it.
     */
    bool seek(int64_t time, int rate);
    int rate() const { return m_rate; }

    /** The time that is heard now, or the one that a seek goes to. */
    int64_t position() const;
    /** 0 when it is not known. */
    int64_t duration() const { return durationOf(m_top); }
    /** Whether it is a file of sound in a common format. */
    bool isCommonFile() const { return isShort(); }
    bool isSeekable() const { return renderer::isSeekable(m_top); }
    Dimensions dimensions() const;

private:
    struct Target {
        int64_t time;
        int rate;
    };
    /**
     * How a medium is opened: by a FilePipeline, by a playbin with its own elements, or by one that reads with
     * libavformat.
     */
    enum class Way { Short, Usual, Libav };
    struct Failure {
        Result result;
        /** Nobody knows what the medium is. */
        bool isUnrecognized = false;
        bool namesCodec = false;
    };
    /** What of a medium no element decodes. */
    struct Missing {
        /** As people call it, empty without. */
        std::string name{};
        bool hasSound = false;
        bool hasPictures = false;
    };

    static void onElementAdded(GstBin *bin, GstBin *parent, GstElement *element, gpointer self);
    static void onStreamsKnown(GstElement *element, gpointer self);
    static void onStreamAdded(GstElement *decoder, GstPad *stream, gpointer self);
    static GstPadProbeReturn onFirstBuffer(GstPad *stream, GstPadProbeInfo *info, gpointer self);
    static void onAboutToFinish(GstElement *playbin, gpointer self);
    static gboolean onMessage(GstBus *bus, GstMessage *message, gpointer self);
    void handle(GstMessage *message);
    void handleOwn(GstMessage *message);
    void handleError(GstMessage *error);
    void handleStart(GstMessage *message);
    static gboolean onAheadOver(gpointer self);
    void adoptAhead();
    void dropAhead();
    void forgetMessages();
    bool isShort() const { return m_way == Way::Short; }
    /** Opens what load() was told. */
    void open();
    void startFile();
    /** Whether captions come from a file of their own; one whose texts nobody takes would end the medium. */
    bool hasCaptionFile() const { return m_outputs.hasCaptions && !m_choice.url.empty(); }
    void openPlaybin(bool needsPicture);
    /**
     * Reports a failure, unless the medium may be opened in another way. What has played goes on there where it was.
     */
    void fail(const Failure &failure);
    void resume();
    static gboolean onSilence(gpointer self);
    bool isLocal() const { return gst_uri_has_protocol(m_uri.c_str(), "file"); }
    bool openAnotherWay(const Failure &failure);
    bool playAnotherWay(const Failure &failure);
    bool isReadBestByLibav() const;
    void reopen(Way way);
    void openAs(Way way);
    void noteMissing(GstMessage *message);
    bool isMissingAnything(bool hasSound) const;
    unsigned flags() const;
    /** Brings the medium to the state that it is to have, or nearer. */
    void settle();
    bool seekNow(const Target &target);
    void finishSeek();
    static gboolean onStandstillDue(gpointer self);
    void checkStreams();
    /** A stream has ended without anything in it; fails when all of them have. */
    void checkContent();
    void selectStream();

    Events m_events;
    AudioBin m_audio;
    VideoBin m_video;
    /** Takes the place of the bin for pictures while nobody sees them. */
    Owned<GstElement> m_blind;
    Captions m_captions;
    Succession m_succession;
    Owned<GstElement> m_playbin;
    FilePipeline m_file;
    /** Which of the two has the medium. */
    GstElement *m_top;
    Source m_watch;
    /** Runs while there are captions that could keep the medium from ending. */
    Source m_captionTimer;
    int64_t m_lastTime = 0;
    /** Runs while a medium is opened ahead. */
    Source m_aheadTimer;
    /** Runs while a local medium is opened the usual way. */
    Source m_silence;
    /** What was told of it. */
    std::vector<Owned<GstMessage>> m_aheadMessages;
    std::string m_uri;
    /** What the playbin is given: the same, or what stands for it. */
    std::string m_openedUri;
    Way m_way = Way::Usual;
    Missing m_missing;
    /** Why the first of the two ways of a playbin does not play the medium; without a failure it plays a part. */
    std::optional<Failure> m_firstFailure;
    /** What plays on when the medium is opened in another way. */
    struct Resumption {
        Target target;
        bool isRunning;
    };
    std::optional<Resumption> m_resumption;
    CaptionFile m_captionFile;
    OpenMedia m_open;
    CaptionChoice m_choice;
    Outputs m_outputs;
    int m_rate = 1000;
    bool m_isHeld = true;
    bool m_hasBegun = false;
    bool m_isLoaded = false;
    /** Nothing is decoded yet. */
    bool m_isOpening = false;
    int m_emptyStreams = 0;
    /** It plays another medium than was loaded. */
    bool m_hasAdvanced = false;
    // Read by streaming threads.
    /** Whether pictures are decoded: to be seen, or because there is nothing else. */
    std::atomic<bool> m_showsPictures = false;
    /** Whether anything came out of the medium that is to be played. */
    std::atomic<bool> m_hasContent = false;
    /** The streams that play, told from the next medium's. */
    guint m_group = GST_GROUP_ID_INVALID;
    /** The seek that is on its way, and the one that waits for its end. */
    std::optional<Target> m_seeking;
    std::optional<Target> m_next;
    /** Where it was brought to while it is held; sinks tell that only when they have played. */
    std::optional<int64_t> m_rest;
};

} // namespace voro::renderer
