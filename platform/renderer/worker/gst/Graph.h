#pragma once

#include "Gst.h"

namespace voro::renderer {

/**
 * Writes the graph of a pipeline to the log, as Graphviz reads it: when it fails, if VORO_LOG has the category "graph",
 * and whenever the process gets SIGUSR1.
 */
class Graph {
public:
    /** The pipeline outlives this object. */
    explicit Graph(GstElement *pipeline);
    ~Graph();
    Graph(const Graph &) = delete;
    Graph &operator=(const Graph &) = delete;

    /** The pipeline has failed. */
    void showFailure() const;

    /** Has SIGUSR1 show the graphs of all pipelines in use, from the main loop. */
    static void showOnSignal();

private:
    void show() const;

    GstElement *const m_pipeline;
};

} // namespace voro::renderer
