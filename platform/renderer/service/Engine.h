#pragma once

#include <renderer/common/Error.h>
#include <renderer/common/Reach.h>
#include <renderer/common/WorkerMessages.h>
#include <sys/types.h>

#include <functional>
#include <memory>
#include <set>
#include <string>

namespace voro::renderer {

/** Plays for a context: a worker. It ends with this object. */
class Engine {
public:
    using Answered = std::function<void(const Result &)>;

    virtual ~Engine() = default;
    /** Asks for something; `done` is called with the answer, with Internal when the engine dies first. */
    virtual void ask(const Request &request, Answered done) = 0;
    /** Hands an open file over, for what is asked next; it stays the caller's as well. False when it cannot. */
    virtual bool pass(int descriptor) = 0;
    /** The frame queues that its outputs show in, for what is asked next. */
    virtual void setFrameQueues(const std::set<std::string> &names) = 0;
    /** Whether it has to show that it is alive also while nothing is asked of it. */
    virtual void setWatched(bool isWatched) = 0;
    /** Whether it completes what it records when this object ends, before it ends itself. */
    virtual void setCompleting(bool isCompleting) = 0;
};

/** An engine's listener. */
class EngineListener {
public:
    virtual ~EngineListener() = default;
    virtual void engineEvent(const Event &event) = 0;
    /** It crashed or hung; it was asked for nothing any more, and may be destroyed now. */
    virtual void engineDied() = 0;
    /** The list that it was asked to open leads to the network, which it does not reach; it will not answer. */
    virtual void engineNeedsNetwork() = 0;
};

/** Where contexts get their engines. */
class EngineSource {
public:
    virtual ~EngineSource() = default;
    /** An engine with that reach on the account of a process; null when that one has too many already. */
    virtual std::unique_ptr<Engine> start(EngineListener &listener, pid_t owner, Reach reach) = 0;
    /** A film is shown, so engines to come are likely to show one. */
    virtual void expectFilms() = 0;
};

} // namespace voro::renderer
