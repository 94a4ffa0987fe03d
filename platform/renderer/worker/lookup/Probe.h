#pragma once

#include "OpenMedia.h"

#include <renderer/common/Error.h>
#include <renderer/common/Medium.h>
#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/media/TagPrecedence.h>
#include <renderer/worker/media/TrackInfo.h>

#include <functional>
#include <string>

namespace voro::renderer {

/** Opens a medium without playing it, to know early whether it plays and what it is. */
class Probe {
public:
    using Probed = std::function<void(const Result &, TrackInfo)>;

    Probe() = default;
    virtual ~Probe() { close(); }
    Probe(const Probe &) = delete;
    Probe &operator=(const Probe &) = delete;

    /** Calls `done` from the main loop. */
    virtual void start(const Medium &medium, Probed done);
    virtual void cancel();

private:
    static void onPad(GstElement *decoder, GstPad *pad, gpointer self);
    static gboolean onMessage(GstBus *bus, GstMessage *message, gpointer self);
    static gboolean onTimeout(gpointer self);
    void handle(GstMessage *message);
    void collect();
    void open(const std::string &uri);
    bool openOtherWay();
    void close();
    void fail(const Result &result);
    void finish(const Result &result);

    std::string m_uri;
    Probed m_done;
    TrackInfo m_info;
    TagPrecedence m_tags;
    OpenMedia m_open;
    Owned<GstElement> m_pipeline;
    MainLoopSource m_watch;
    MainLoopSource m_timer;
};

} // namespace voro::renderer
