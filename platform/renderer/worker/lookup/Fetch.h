#pragma once

#include <renderer/common/Error.h>
#include <renderer/worker/gst/Gst.h>

#include <functional>
#include <mutex>
#include <string>

namespace voro::renderer {

/** Gets a small file from the net. */
class Fetch {
public:
    using Fetched = std::function<void(const Result &, std::string)>;

    /** A larger text is not read to its end. */
    static constexpr size_t Largest = 4 * 1024 * 1024;

    Fetch() = default;
    ~Fetch() { cancel(); }
    Fetch(const Fetch &) = delete;
    Fetch &operator=(const Fetch &) = delete;

    /** Calls `done` from the main loop. */
    void get(const std::string &uri, Fetched done);
    void cancel();

private:
    static void onData(GstElement *sink, GstBuffer *buffer, GstPad *pad, gpointer self);
    static gboolean onMessage(GstBus *bus, GstMessage *message, gpointer self);
    static gboolean onTimeout(gpointer self);
    void finish(const Result &result);

    Fetched m_done;
    Owned<GstElement> m_pipeline;
    MainLoopSource m_watch;
    MainLoopSource m_timer;
    /** Filled by a streaming thread. */
    std::mutex m_mutex;
    std::string m_content;
};

} // namespace voro::renderer
