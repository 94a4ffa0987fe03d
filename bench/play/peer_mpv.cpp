/* The peer libmpv. */

#include "Peer.h"

#include <mpv/client.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

struct End {
    void operator()(mpv_handle *player) const { mpv_terminate_destroy(player); }
};
using Player = std::unique_ptr<mpv_handle, End>;

void must(int result)
{
    if (result >= 0) {
        return;
    }
    std::fprintf(stderr, "libmpv: %s\n", mpv_error_string(result));
    std::exit(1);
}

Player open(bool isPaused)
{
    Player player(mpv_create());
    for (const auto &[name, value] : {std::pair{"ao", "pulse"}, {"vo", "null"}, {"pause", isPaused ? "yes" : "no"}}) {
        must(mpv_set_option_string(player.get(), name, value));
    }
    must(mpv_initialize(player.get()));
    return player;
}

void command(const Player &player, std::vector<const char *> words)
{
    // Whoever does not take its events loses the next ones.
    while (mpv_wait_event(player.get(), 0)->event_id != MPV_EVENT_NONE) {
    }
    words.push_back(nullptr);
    must(mpv_command(player.get(), words.data()));
}

class Mpv : public bench::Peer {
public:
    void play(const std::string &uri) override { command(m_player, {"loadfile", uri.c_str()}); }
    void seek(int milliseconds) override
    {
        command(m_player, {"seek", std::to_string(milliseconds / 1000.0).c_str(), "absolute+exact"});
    }
    void stop() override { command(m_player, {"stop"}); }
    void prepare(const std::string &uri) override
    {
        m_prepared.push_back(open(true));
        command(m_prepared.back(), {"loadfile", uri.c_str()});
        while (mpv_wait_event(m_prepared.back().get(), 5)->event_id != MPV_EVENT_PLAYBACK_RESTART) {
        }
    }

private:
    Player m_player = open(false);
    std::vector<Player> m_prepared;
};

} // namespace

int main()
{
    Mpv peer;
    bench::obeyInput(peer);
}
