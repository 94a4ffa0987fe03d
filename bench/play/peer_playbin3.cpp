/* The peer of bench_play and bench_memory: playbin3 in the application's own process. It plays each URI that it reads
   and tells when it was asked to; "prepare URI" only pauses it. */

#include "Figures.h"

#include <gst/gst.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

GstElement *open(const std::string &uri, GstState state)
{
    GstElement *playbin = gst_element_factory_make("playbin3", nullptr);
    g_object_set(playbin, "uri", uri.c_str(), nullptr);
    gst_element_set_state(playbin, state);
    return playbin;
}

} // namespace

int main(int argc, char **argv)
{
    gst_init(&argc, &argv);
    std::vector<GstElement *> players;
    std::cout << "ready" << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
        const int64_t asked = bench::now();
        const bool isPrepare = line.starts_with("prepare ");
        GstElement *playbin = open(isPrepare ? line.substr(8) : line, isPrepare ? GST_STATE_PAUSED : GST_STATE_PLAYING);
        players.push_back(playbin);
        if (isPrepare)
            gst_element_get_state(playbin, nullptr, nullptr, 5 * GST_SECOND);
        std::cout << asked << std::endl;
    }
    for (GstElement *playbin : players) {
        gst_element_set_state(playbin, GST_STATE_NULL);
        gst_object_unref(playbin);
    }
}
