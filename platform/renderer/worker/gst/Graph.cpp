#include "Graph.h"

#include <glib-unix.h>
#include <pps/Log.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <vector>

namespace voro::renderer {

namespace {

std::vector<const Graph *> &graphs()
{
    static std::vector<const Graph *> all;
    return all;
}

/** Passes a signal on to the main loop. GLib's own watch of signals would start a thread in every worker. */
int requests = -1;

void onSignal(int)
{
    const int before = errno;
    eventfd_write(requests, 1);
    errno = before;
}

} // namespace

Graph::Graph(GstElement *pipeline) : m_pipeline(pipeline)
{
    graphs().push_back(this);
}

Graph::~Graph()
{
    std::erase(graphs(), this);
}

void Graph::showFailure() const
{
    if (log::areDetailsWanted(log::Category::Graph)) {
        show();
    }
}

void Graph::show() const
{
    const Owned<char> text(gst_debug_bin_to_dot_data(GST_BIN(m_pipeline), GST_DEBUG_GRAPH_SHOW_ALL));
    if (text) {
        std::fprintf(stderr, "voro-renderer: graph: %s\n%s", GST_OBJECT_NAME(m_pipeline), text.get());
    }
}

void Graph::showOnSignal()
{
    requests = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    g_unix_fd_add(
        requests, G_IO_IN,
        [](gint descriptor, GIOCondition, gpointer) -> gboolean {
            eventfd_t count = 0;
            eventfd_read(descriptor, &count);
            for (const Graph *graph : graphs()) {
                // One that is still on its way there, or hangs on it, is the most telling.
                if (GST_STATE_TARGET(graph->m_pipeline) > GST_STATE_READY) {
                    graph->show();
                }
            }
            return G_SOURCE_CONTINUE;
        },
        nullptr);
    struct sigaction action {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    sigaction(SIGUSR1, &action, nullptr);
}

} // namespace voro::renderer
