#pragma once

#include "PipelinePlayback.h"
#include "ReadingWays.h"
#include "VideoBin.h"

#include <renderer/worker/captions/CaptionFile.h>
#include <renderer/worker/captions/Captions.h>
#include <renderer/worker/lookup/OpenMedia.h>

#include <atomic>
#include <cstdint>
#include <string>

namespace voro::renderer {

/**
 * Plays everything, with a playbin. What its own elements cannot open is read with libavformat; what cannot be read so
 * either fails for the reason that is most telling.
 */
class PlaybinPlayback : public PipelinePlayback {
public:
    explicit PlaybinPlayback(Succession &succession);
    ~PlaybinPlayback() override;

    void setSource(const Rectangle &part) override { m_video.setSource(part); }
    bool load(const Piece &piece) override;
    /** To open a medium so takes as long as to open it when it is asked for. */
    void loadAhead(const Piece &) override {}
    void selectCaptions(const CaptionChoice &captions) override;
    Dimensions dimensions() const override;
    CaptionInfo captions() const override;
    bool isCommonFile() const override { return false; }

private:
    /** A stream that no element decodes. */
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
    static gboolean onSilence(gpointer self);
    static gboolean onStandstillDue(gpointer self);
    void stop() override;
    void handle(GstMessage *message) override;
    void handleNote(GstMessage *note) override;
    void handleError(GstMessage *error) override;

    void open(bool needsPicture);
    std::string openCaptions();
    /** Opens the medium again; what has played goes on there where it was. */
    void reopen(bool needsPicture);
    unsigned flags() const;
    bool showsCaptionFile() const { return m_piece.hasCaptionFile() && !m_isCaptionFileBad; }
    void selectStream();
    bool isOfCaptionFile(GstObject *source) const;
    /** Reports a failure, unless the medium may be read in the other way. */
    void fail(const Failure &failure);
    void noteMissing(GstMessage *message);
    bool isMissingAnything(bool hasSound) const;
    void checkStreams();
    /** A stream has ended without anything in it; fails when all of them have. */
    void checkContent();

    VideoBin m_video;
    /** Takes the place of the bin for pictures while nobody sees them. */
    Owned<GstElement> m_noVideo;
    Captions m_captions;
    CaptionFile m_captionFile;
    /** What the playbin was given as captions from elsewhere. */
    std::string m_captionUri;
    bool m_isCaptionFileBad = false;
    /** Runs while there are captions that could keep the medium from ending. */
    MainLoopSource m_captionTimer;
    int64_t m_lastTime = 0;
    Piece m_piece;
    ReadingWays m_ways;
    /** The playbin's URI: the medium's own, or one of LibavProtocol. */
    std::string m_openedUri;
    OpenMedia m_open;
    Missing m_missing;
    /** Runs while a local medium is opened with the playbin's own elements. */
    MainLoopSource m_silence;
    int m_emptyStreams = 0;
    // Read by streaming threads.
    /** Whether pictures are decoded: to be seen, or because there is nothing else. */
    std::atomic<bool> m_showsPictures = false;
    /** Whether anything came out of the medium that is to be played. */
    std::atomic<bool> m_hasContent = false;
};

} // namespace voro::renderer
