#pragma once

#include <pps/Connection.h>
#include <pps/Text.h>
#include <renderer/worker/gst/Gst.h>

#include <functional>

namespace voro::renderer {

/** The worker's end of its connection to the renderer service, in the main loop. */
class Link {
public:
    using Handler = std::function<void(const pps::Message &)>;

    /**
     * Opens the connection over the socket that the worker was started with; false when there is none. `onEnd` is
     * called when the daemon is gone or has no more use for this worker.
     */
    bool open(Handler handler, std::function<void()> onEnd);
    void send(std::string_view lines);

private:
    static gboolean onReadable(gint fd, GIOCondition condition, gpointer self);
    /** False at the end. */
    bool readAll();

    pps::Connection m_connection;
    Handler m_handler;
    std::function<void()> m_onEnd;
    MainLoopSource m_source;
};

} // namespace voro::renderer
