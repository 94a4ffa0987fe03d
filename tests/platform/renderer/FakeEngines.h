#pragma once

#include <renderer/service/Engine.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

/**
 * Engines that record what they are asked and answer as the test says. Used in the thread of the contexts, as the
 * contexts are.
 */
class FakeEngines : public voro::renderer::EngineSource {
public:
    std::unique_ptr<voro::renderer::Engine> start(voro::renderer::EngineListener &listener, pid_t,
                                                  voro::renderer::Reach reach) override
    {
        if (areTaken) {
            return nullptr;
        }
        ++m_started;
        m_reach = reach;
        m_listener = &listener;
        return std::make_unique<Fake>(*this);
    }
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
    std::vector<std::string> takeLog() { return std::exchange(m_log, {}); }
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

    void release(const voro::renderer::Result &result = {}) { std::exchange(m_done, nullptr)(result); }
    /** Sends an event of the present engine: "NAME ATTRIBUTE…". */
    void tell(const std::string &event)
    {
        std::string lines = "msg::" + event + '\n';
        std::replace(lines.begin(), lines.end(), ' ', '\n');
        voro::pps::Message message;
        if (m_listener && message.parse(lines)) {
            m_listener->engineEvent(voro::renderer::parseEvent(message, lines).value());
        }
    }
    void die()
    {
        const auto pending = std::exchange(m_done, nullptr);
        std::exchange(m_listener, nullptr)->engineDied();
        if (pending) {
            pending({voro::renderer::ErrorCode::Internal, "the worker died"});
        }
    }

private:
    class Fake : public voro::renderer::Engine {
    public:
        explicit Fake(FakeEngines &owner) : m_owner(owner) {}
        ~Fake() override
        {
            m_owner.m_log.emplace_back("end");
            m_owner.m_done = nullptr;
            m_owner.m_listener = nullptr;
        }

        void ask(const voro::renderer::Request &request, Answered done) override
        {
            m_owner.asked(request, std::move(done));
        }
        void setFrameQueues(const std::set<std::string> &) override {}
        bool pass(int) override
        {
            m_owner.m_log.emplace_back("file");
            return true;
        }
        void setWatched(bool isWatched) override { m_owner.m_isWatched = isWatched; }
        void setCompleting(bool isCompleting) override { m_owner.m_isCompleting = isCompleting; }

    private:
        FakeEngines &m_owner;
    };

    void asked(const voro::renderer::Request &request, voro::renderer::Engine::Answered done)
    {
        constexpr std::string_view Start = "msg::";
        constexpr std::string_view Id = " id:n:0";
        std::string entry = voro::renderer::toText(request, 0);
        entry.pop_back();
        std::ranges::replace(entry, '\n', ' ');
        entry.erase(entry.find(Id), Id.size()).erase(0, Start.size());
        const std::string command = entry.substr(0, entry.find(' '));
        m_log.push_back(entry);
        if (held == command) {
            m_done = std::move(done);
            return;
        }
        const auto answer = answers.find(command);
        const auto result = answer == answers.end() ? voro::renderer::Result() : answer->second;
        if (command == "open" && result) {
            tell("track track:n:1 md_title_duration:n:5000 md_title_seekable:b:true md_video_width:n:0 "
                 "md_video_height:n:0");
            tell("queue current:n:1 total:n:" + std::to_string(total));
        }
        done(result);
    }

    voro::renderer::EngineListener *m_listener = nullptr;
    voro::renderer::Engine::Answered m_done;
    std::vector<std::string> m_log;
    int m_started = 0;
    voro::renderer::Reach m_reach;
    bool m_isWatched = false;
    bool m_expectsFilms = false;
    bool m_isCompleting = false;
};
