#pragma once

#include "Processes.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace voro::multimedia {
class MediaPlayer;
}

namespace bench {

/** One of those that are compared: ours or a peer. Each command returns the time when it was given (see now()). */
class Contestant {
public:
    virtual ~Contestant() = default;
    virtual std::string name() const = 0;
    virtual int64_t play(const std::string &path) = 0;
    virtual int64_t seek(int milliseconds) = 0;
    virtual void stop() = 0;
    /** Begins again with a new player or process. */
    virtual void renew() = 0;
};

/** Ends the program when the player refused. */
void must(int mediaError);

/** Drops the library's log: media are tried as playlists first, and it tells so each time. */
void silenceLibrary();

/** One player of the library, in this process. */
class Ours : public Contestant {
public:
    Ours();
    ~Ours() override;
    std::string name() const override { return "ours"; }
    int64_t play(const std::string &path) override;
    int64_t seek(int milliseconds) override;
    void stop() override;
    void renew() override;

private:
    std::unique_ptr<voro::multimedia::MediaPlayer> m_player;
};

/** The path of a program beside this one. */
std::string program(const std::string &name);

/** One of the programs peer_NAME. */
class PeerProcess : public Contestant {
public:
    enum class Kept { Warm, Cold };
    /** A warm one is one process throughout, for a cold one each play() has a new process. */
    explicit PeerProcess(const std::string &name, Kept kept = Kept::Warm);
    std::string name() const override;
    int64_t play(const std::string &path) override;
    int64_t seek(int milliseconds) override;
    void stop() override;
    void renew() override;
    /** Adds a player that is ready to play. */
    void prepare(const std::string &path);
    pid_t process() const { return m_child->process(); }

private:
    int64_t ask(const std::string &line);

    std::string m_name;
    Kept m_kept;
    std::unique_ptr<Child> m_child;
};

} // namespace bench
