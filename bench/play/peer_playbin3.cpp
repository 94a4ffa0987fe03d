/* The peer playbin3: GStreamer's own player in the application's process. */

#include "Peer.h"

#include <gst/gst.h>

#include <memory>
#include <string>
#include <vector>

namespace {

struct End {
    void operator()(GstElement *playbin) const
    {
        gst_element_set_state(playbin, GST_STATE_NULL);
        gst_object_unref(playbin);
    }
};
using Playbin = std::unique_ptr<GstElement, End>;

Playbin open(const std::string &uri, GstState state)
{
    Playbin playbin(gst_element_factory_make("playbin3", nullptr));
    g_object_set(playbin.get(), "uri", uri.c_str(), nullptr);
    gst_element_set_state(playbin.get(), state);
    return playbin;
}

class Playbin3 : public bench::Peer {
public:
    void play(const std::string &uri) override
    {
        stop();
        m_player = open(uri, GST_STATE_PLAYING);
    }
    void seek(int milliseconds) override
    {
        gst_element_seek_simple(m_player.get(), GST_FORMAT_TIME,
                                static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE),
                                milliseconds * GST_MSECOND);
    }
    void stop() override { m_player.reset(); }
    void prepare(const std::string &uri) override
    {
        m_prepared.push_back(open(uri, GST_STATE_PAUSED));
        gst_element_get_state(m_prepared.back().get(), nullptr, nullptr, 5 * GST_SECOND);
    }

private:
    Playbin m_player;
    std::vector<Playbin> m_prepared;
};

} // namespace

int main(int argc, char **argv)
{
    gst_init(&argc, &argv);
    Playbin3 peer;
    bench::obeyInput(peer);
}
