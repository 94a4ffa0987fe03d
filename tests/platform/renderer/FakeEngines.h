#pragma once

#include <renderer/service/Engine.h>

#include <map>
#include <string>
#include <vector>

/**
 * Engines that record what they are asked and answer as the test says. Used in the thread of the contexts, as the
 * contexts are.
 */
class FakeEngines : public voro::renderer::EngineSource {
public:
    std::unique_ptr<voro::renderer::Engine> start(voro::renderer::EngineListener &listener, pid_t owner,
                                                  voro::renderer::Reach reach) override;
    void expectFilms() override { m_expectsFilms = true; }

    /** The answer to a command from now on; without one it succeeds. */
    std::map<std::string, voro::renderer::Result, std::less<>> answers;
    /** A command that is not answered before release(), or by the engine's death. */
    std::string held;
    /** Whether a process that wants one has too many. */
    bool areTaken = false;
    /** What the queue event before the answer to an "open" tells. */
    int total = 1;

    /** What was asked since the last call: "COMMAND ATTRIBUTE…", and "end" when a context let go of its engine. */
    std::vector<std::string> takeLog();
    int started() const { return m_started; }
    /** Of the engine that was started last. */
    voro::renderer::Reach reach() const { return m_reach; }
    /** The present engine's list leads to the network. */
    void needNetwork() { m_listener->engineNeedsNetwork(); }
    bool isWatched() const { return m_isWatched; }
    /** Whether the present engine, or the last one, completes its recording before it ends. */
    bool isCompleting() const { return m_isCompleting; }
    bool areFilmsExpected() const { return m_expectsFilms; }
    bool isHolding() const { return m_done != nullptr; }

    void release(const voro::renderer::Result &result = {});
    /** Sends an event of the present engine: "NAME ATTRIBUTE…". */
    void tell(const std::string &event);
    void die();

private:
    class Fake;

    void asked(const voro::renderer::Request &request, voro::renderer::Engine::Answered done);

    voro::renderer::EngineListener *m_listener = nullptr;
    voro::renderer::Engine::Answered m_done;
    std::vector<std::string> m_log;
    int m_started = 0;
    voro::renderer::Reach m_reach;
    bool m_isWatched = false;
    bool m_expectsFilms = false;
    bool m_isCompleting = false;
};
