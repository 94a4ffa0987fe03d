#include "Process.h"

#include <pps/Log.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

extern char **environ;

namespace voro::renderer {

namespace {

/** This process's environment, in another session. */
class Environment {
public:
    explicit Environment(const Session &session)
    {
        for (char **variable = environ; *variable; ++variable) {
            const std::string_view name = std::string_view(*variable).substr(0, std::strcspn(*variable, "="));
            if (name != "DISPLAY" && name != "XAUTHORITY") {
                m_variables.push_back(*variable);
            }
        }
        add(m_display, "DISPLAY=", session.display);
        add(m_authority, "XAUTHORITY=", session.authority);
        m_variables.push_back(nullptr);
    }
    char *const *variables() const { return m_variables.data(); }

private:
    void add(std::string &place, const char *name, const std::string &value)
    {
        if (!value.empty()) {
            place = name + value;
            m_variables.push_back(place.data());
        }
    }

    std::string m_display;
    std::string m_authority;
    std::vector<char *> m_variables;
};

} // namespace

Process::Process(const std::string &program, std::initializer_list<Socket> sockets, const Session &session)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const Socket &socket : sockets) {
        posix_spawn_file_actions_adddup2(&actions, socket.descriptor, socket.number);
    }
    char *const arguments[] = {const_cast<char *>(program.c_str()), nullptr};
    const int error =
        posix_spawn(&m_id, program.c_str(), &actions, nullptr, arguments, Environment(session).variables());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        m_id = -1;
        log::warn(log::Category::Worker, "%s: %s", program.c_str(), std::strerror(error));
        return;
    }
    m_descriptor = static_cast<int>(syscall(SYS_pidfd_open, m_id, 0));
    m_ended = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_ended.get(), &QSocketNotifier::activated, [this] {
        reap();
        // A notifier must not be destroyed while it notifies.
        m_ended.release()->deleteLater();
        if (m_callback) {
            // The callback may destroy this object.
            std::exchange(m_callback, nullptr)();
        }
    });
}

Process::~Process()
{
    kill();
    reap();
}

void Process::onEnd(std::function<void()> callback)
{
    m_callback = std::move(callback);
}

void Process::kill()
{
    if (isRunning()) {
        ::kill(m_id, SIGKILL);
    }
}

std::string Process::ending() const
{
    return WIFSIGNALED(m_status) ? "was ended by signal " + std::to_string(WTERMSIG(m_status))
                                 : "ended with status " + std::to_string(WEXITSTATUS(m_status));
}

void Process::reap()
{
    if (!isRunning()) {
        return;
    }
    while (waitpid(m_id, &m_status, 0) < 0 && errno == EINTR) {
    }
    close();
}

void Process::letGo()
{
    if (isRunning()) {
        close();
    }
}

void Process::close()
{
    m_id = -1;
    m_ended->setEnabled(false);
    ::close(m_descriptor);
}

} // namespace voro::renderer
