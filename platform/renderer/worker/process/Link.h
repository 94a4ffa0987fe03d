#pragma once

#include <pps/Connection.h>
#include <pps/Text.h>
#include <renderer/worker/gst/Gst.h>

#include <functional>

namespace voro::renderer {

/** The worker's end of its connection to the renderer service, in the main loop. The worker ends with it. */
class Link {
public:
    using Handler = std::function<void(const pps::Message &)>;

    /** Opens the connection over the socket that the worker was started with; false when there is none. */
    bool open(Handler handler);
    void send(std::string_view lines);

private:
    static gboolean onReadable(gint fd, GIOCondition condition, gpointer self);
    void readAll();

    pps::Connection m_connection;
    Handler m_handler;
    Source m_source;
};

} // namespace voro::renderer
