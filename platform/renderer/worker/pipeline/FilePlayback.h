#pragma once

#include "DecoderChain.h"
#include "PipelinePlayback.h"

#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace voro::renderer {

/**
 * Plays sound files of the common formats, of which it knows what decodes them. Nothing is searched for, made or linked
 * for a file when one of its format was played before: that is what most of the time goes into until a medium sounds.
 */
class FilePlayback : public PipelinePlayback {
public:
    explicit FilePlayback(Succession &succession);
    ~FilePlayback() override;

    /** Such a file has neither pictures nor captions. */
    void setSource(const Rectangle &) override {}
    void selectCaptions(const CaptionChoice &) override {}
    Dimensions dimensions() const override { return {}; }
    CaptionInfo captions() const override { return {}; }
    bool isCommonFile() const override { return true; }

    bool load(const Piece &piece) override;
    void loadAhead(const Piece &piece) override;

private:
    /** A file that plays or will. */
    struct Track {
        FilePlayback *owner = nullptr;
        std::unique_ptr<DecoderChain> chain;
        /** Where it enters the succession of files. */
        Owned<GstPad> input;
        std::atomic<bool> hasSound = false;
    };

    static GstPadProbeReturn onData(GstPad *output, GstPadProbeInfo *info, gpointer track);
    static gboolean onAheadOver(gpointer self);
    void stop() override;
    void handle(GstMessage *message) override;
    void handleNote(GstMessage *note) override;
    void handleError(GstMessage *error) override;
    void forgetPlayed() override;

    bool take(const Piece &piece);
    void start();
    void adoptAhead();
    void dropAhead();
    void onPlayed();
    bool append(const std::string &uri);
    void remove(Track &track);

    Piece m_piece;
    /** Runs while a medium is opened ahead. */
    MainLoopSource m_aheadTimer;
    /** Its messages until it is loaded. */
    std::vector<Owned<GstMessage>> m_aheadMessages;
    /** Part of the pipeline, owned by it: passes one file on after the other. */
    GstElement *m_concat;
    /** The tags of the loaded file that its decoders do not report. */
    Owned<GstTagList> m_tags;
    /** For the members below, which streaming threads use, too. */
    std::mutex m_mutex;
    bool m_isTaken = false;
    std::list<Track> m_tracks;
    /** Chains without a file. */
    std::list<std::unique_ptr<DecoderChain>> m_kept;
};

} // namespace voro::renderer
