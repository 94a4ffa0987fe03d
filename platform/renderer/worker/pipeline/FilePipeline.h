#pragma once

#include "AudioBin.h"
#include "DecoderChain.h"
#include "Succession.h"

#include <renderer/worker/gst/Gst.h>

#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <string>

namespace voro::renderer {

/**
 * Plays sound files of the common formats, of which it knows what decodes them. Nothing is searched for, made or linked
 * for a file when one of its format was played before: that is what most of the time goes into until a medium sounds.
 */
class FilePipeline {
public:
    /** Its messages are posted on the bus, which has to be empty of older ones when a file is started. */
    FilePipeline(GstBus *bus, Succession &succession);
    ~FilePipeline();
    FilePipeline(const FilePipeline &) = delete;
    FilePipeline &operator=(const FilePipeline &) = delete;

    GstElement *element() const { return m_pipeline.get(); }
    AudioBin &audio() { return m_audio; }

    /** Takes up a medium; false when it is none that can be played this way. */
    bool load(const std::string &uri);
    /** Opens what was taken up, up to the closed gate. */
    void start(bool isAudible, const std::string &role);
    void unload();
    /** Lets go of what has played, when the next file plays. */
    void forgetPlayed();

private:
    /** A file that plays or will. */
    struct Track {
        FilePipeline *owner = nullptr;
        std::unique_ptr<DecoderChain> chain;
        /** Where it enters the succession of files. */
        Owned<GstPad> input;
        std::atomic<bool> hasSound = false;
    };

    static GstPadProbeReturn onData(GstPad *output, GstPadProbeInfo *info, gpointer track);
    void onPlayed();
    bool append(const std::string &uri);
    void remove(Track &track);

    AudioBin m_audio;
    Succession &m_succession;
    Owned<GstElement> m_pipeline;
    /** Part of the pipeline, owned by it: passes one file on after the other. */
    GstElement *m_concat;
    /** What follows is used by streaming threads, too. */
    std::mutex m_mutex;
    bool m_isLoaded = false;
    /** Of the file that is loaded, as far as it is not told by what decodes it. */
    Owned<GstTagList> m_tags;
    std::list<Track> m_tracks;
    /** Chains without a file. */
    std::list<std::unique_ptr<DecoderChain>> m_kept;
};

} // namespace voro::renderer
