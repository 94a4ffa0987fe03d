#pragma once

#include "FileWriter.h"
#include "SampleGate.h"

#include <renderer/common/Error.h>
#include <renderer/common/RecordingFormat.h>
#include <renderer/worker/gst/Graph.h>
#include <renderer/worker/gst/Gst.h>

#include <functional>
#include <string>

namespace voro::renderer {

/** From the source of the sound to the file. */
class RecordingPipeline {
public:
    struct Events {
        /** The source gives its first samples. */
        std::function<void()> begun;
        /** Everything is in the file, or the source has ended. */
        std::function<void()> ended;
        std::function<void(const Result &)> failed;
    };

    /** `source` is taken over, and so is `encoder`, the format's, which is null for samples as they are. */
    RecordingPipeline(Events events, GstElement *source, GstElement *encoder, const RecordingFormat &format,
                      int channels);
    ~RecordingPipeline();
    RecordingPipeline(const RecordingPipeline &) = delete;
    RecordingPipeline &operator=(const RecordingPipeline &) = delete;

    SampleGate &gate() { return m_gate; }

    /** Finds out whether there is a source, without recording. */
    Result prepare();
    /** Begins to record into the file, at once or when the gate is opened. */
    void start(pps::Fd file, bool isOpen);
    /** Lets no more samples in; ended or failed follows when the rest is written. */
    void finish();
    /** Lets go of the source and of the file, which is complete then. */
    void release();
    /** Likewise of a file that nothing was recorded into, which stays as it is; it can be started again. */
    void abandon();

private:
    static gboolean onMessage(GstBus *bus, GstMessage *message, gpointer self);
    void handle(GstMessage *message);
    Result failureOf(GstMessage *message) const;
    void keepFormat();

    Events m_events;
    Owned<GstElement> m_pipeline;
    Graph m_graph{m_pipeline.get()};
    // Parts of the pipeline, owned by it.
    GstElement *m_source;
    GstElement *m_filter;
    SampleGate m_gate;
    FileWriter m_writer;
    MainLoopSource m_watch;
};

} // namespace voro::renderer
