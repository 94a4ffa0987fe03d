#pragma once

#include <string>

namespace bench {

/** Another media library behind one interface: a program of its own that is driven by lines. */
class Peer {
public:
    virtual ~Peer() = default;
    /** Replaces what its one player plays. */
    virtual void play(const std::string &uri) = 0;
    virtual void seek(int milliseconds) = 0;
    virtual void stop() = 0;
    /** Adds a player, and returns when it is ready to play. */
    virtual void prepare(const std::string &uri) = 0;
};

/** Carries out "play URI", "seek MS", "stop" or "prepare URI" and answers with the time when it began. */
void obey(Peer &peer, const std::string &line);

/** Obeys the lines of standard input until its end. */
void obeyInput(Peer &peer);

} // namespace bench
