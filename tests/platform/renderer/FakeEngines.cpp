#include "FakeEngines.h"

#include <algorithm>
#include <utility>

using namespace voro::renderer;

class FakeEngines::Fake : public Engine {
public:
    explicit Fake(FakeEngines &owner) : m_owner(owner) {}
    ~Fake() override
    {
        m_owner.m_log.emplace_back("end");
        m_owner.m_done = nullptr;
        m_owner.m_listener = nullptr;
    }

    void ask(const Request &request, Answered done) override { m_owner.asked(request, std::move(done)); }
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

std::unique_ptr<Engine> FakeEngines::start(EngineListener &listener, pid_t, Reach reach)
{
    if (areTaken) {
        return nullptr;
    }
    ++m_started;
    m_reach = reach;
    m_listener = &listener;
    return std::make_unique<Fake>(*this);
}

void FakeEngines::asked(const Request &request, Engine::Answered done)
{
    constexpr std::string_view Start = "msg::";
    constexpr std::string_view Id = " id:n:0";
    std::string entry = toText(request, 0);
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
    const Result result = answer == answers.end() ? Result() : answer->second;
    if (command == "open" && result) {
        tell(
            "track track:n:1 md_title_duration:n:5000 md_title_seekable:b:true md_video_width:n:0 md_video_height:n:0");
        tell("queue current:n:1 total:n:" + std::to_string(total));
    }
    done(result);
}

void FakeEngines::release(const Result &result)
{
    std::exchange(m_done, nullptr)(result);
}

void FakeEngines::tell(const std::string &event)
{
    std::string lines = "msg::" + event + '\n';
    std::replace(lines.begin(), lines.end(), ' ', '\n');
    voro::pps::Message message;
    if (m_listener && message.parse(lines)) {
        m_listener->engineEvent(parseEvent(message, lines).value());
    }
}

void FakeEngines::die()
{
    const auto pending = std::exchange(m_done, nullptr);
    std::exchange(m_listener, nullptr)->engineDied();
    if (pending) {
        pending({ErrorCode::Internal, "the worker died"});
    }
}

std::vector<std::string> FakeEngines::takeLog()
{
    return std::exchange(m_log, {});
}
