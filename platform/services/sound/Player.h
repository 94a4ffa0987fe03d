#pragma once

#include "SoundServer.h"

#include <sys/types.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace voro::sound {

/**
 * Plays sounds in a thread of its own, because the sound server keeps its callers waiting, perhaps for ever. The thread
 * starts with the first sound.
 */
class Player {
public:
    using Action = SoundServer::Action;
    /** Takes how it went, in the player's thread: empty, or a problem for people. */
    using Performed = std::function<void(std::string_view problem)>;

    /** The sounds of the project's own lie in the folder. */
    explicit Player(std::string folder);
    /** Lets a thread that is stuck go on without it. No `done` is called any more. */
    ~Player();
    Player(const Player &) = delete;
    Player &operator=(const Player &) = delete;

    /**
     * Performs it for a process. False when too much waits already, of all or of this process, or no thread is to be
     * had; `done` is not called then.
     */
    bool perform(Action action, const Sound &sound, pid_t process, Performed done);

private:
    struct Task {
        Action action;
        const Sound *sound;
        pid_t process;
        Performed done;
    };
    /** What the thread needs, also when it outlives the player. */
    struct Shared {
        std::mutex mutex;
        std::condition_variable changed;
        std::deque<Task> tasks;
        bool isEnding = false;
        bool hasEnded = false;
    };
    static void run(const std::shared_ptr<Shared> &shared, const std::string &folder);

    const std::string m_folder;
    std::shared_ptr<Shared> m_shared;
    bool m_isStarted = false;
};

} // namespace voro::sound
