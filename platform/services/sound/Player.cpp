#include "Player.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <thread>

namespace voro::sound {

namespace {

using namespace std::chrono_literals;

/** More than this is not heard one by one any more. */
constexpr size_t MaximumWaiting = 64;
/** One program must not have the sounds of others refused. */
constexpr std::ptrdiff_t MaximumOfOneProcess = 8;

} // namespace

Player::Player(std::string folder) : m_folder(std::move(folder)), m_shared(std::make_shared<Shared>()) {}

Player::~Player()
{
    std::unique_lock lock(m_shared->mutex);
    m_shared->isEnding = true;
    m_shared->tasks.clear();
    m_shared->changed.notify_all();
    if (m_isStarted) {
        m_shared->changed.wait_for(lock, 1s, [this] { return m_shared->hasEnded; });
    }
}

bool Player::perform(Action action, const Sound &sound, pid_t process, Performed done)
{
    const std::lock_guard lock(m_shared->mutex);
    const auto ofProcess = std::ranges::count(m_shared->tasks, process, &Task::process);
    if (m_shared->tasks.size() >= MaximumWaiting || ofProcess >= MaximumOfOneProcess) {
        return false;
    }
    m_shared->tasks.push_back({action, &sound, process, std::move(done)});
    m_shared->changed.notify_all();
    if (m_isStarted) {
        return true;
    }
    try {
        std::thread([shared = m_shared, folder = m_folder] { run(shared, folder); }).detach();
        m_isStarted = true;
    } catch (const std::system_error &) {
        // No thread is to be had; the next sound may get one.
        m_shared->tasks.clear();
    }
    return m_isStarted;
}

void Player::run(const std::shared_ptr<Shared> &shared, const std::string &folder)
{
    auto server = loadSoundServer(folder);
    std::unique_lock lock(shared->mutex);
    for (;;) {
        shared->changed.wait(lock, [&] { return shared->isEnding || !shared->tasks.empty(); });
        if (shared->isEnding) {
            break;
        }
        const Task task = std::move(shared->tasks.front());
        shared->tasks.pop_front();
        lock.unlock();
        const std::string_view problem = server ? server->perform(task.action, *task.sound) : "no sound module";
        lock.lock();
        if (!shared->isEnding) {
            task.done(problem);
        }
    }
    lock.unlock();
    server.reset();
    lock.lock();
    shared->hasEnded = true;
    shared->changed.notify_all();
}

} // namespace voro::sound
