#include "Process.h"

#include "ErrorRelay.h"

#include <fcntl.h>
#include <poll.h>
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

/** This process's environment without the X server of the application that started the daemon. */
std::vector<char *> environment()
{
    std::vector<char *> variables;
    for (char **variable = environ; *variable; ++variable) {
        const std::string_view text = *variable;
        if (!text.starts_with("DISPLAY=") && !text.starts_with("XAUTHORITY=")) {
            variables.push_back(*variable);
        }
    }
    variables.push_back(nullptr);
    return variables;
}

} // namespace

Process::Process(const std::string &program, std::span<const Socket> sockets, const std::vector<std::string> &options)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ErrorRelay::descriptor(), STDERR_FILENO);
    for (const Socket &socket : sockets) {
        posix_spawn_file_actions_adddup2(&actions, socket.descriptor, socket.number);
    }
    std::vector<char *> arguments{const_cast<char *>(program.c_str())};
    for (const std::string &option : options) {
        arguments.push_back(const_cast<char *>(option.c_str()));
    }
    arguments.push_back(nullptr);
    const int error = posix_spawn(&m_id, program.c_str(), &actions, nullptr, arguments.data(), environment().data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        m_id = -1;
        log::warn(log::Category::Worker, "%s: %s", program.c_str(), std::strerror(error));
        return;
    }
    watch(pps::Fd(static_cast<int>(syscall(SYS_pidfd_open, m_id, 0))));
}

Process::Process(pid_t id, pps::Fd descriptor) : m_id(id)
{
    watch(std::move(descriptor));
}

void Process::watch(pps::Fd descriptor)
{
    m_descriptor = std::move(descriptor);
    m_ended = std::make_unique<QSocketNotifier>(m_descriptor.get(), QSocketNotifier::Read);
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
    if (isRunning()) {
        // One that waits for a disk ends with that, if ever.
        constexpr int LongestEnd = 200;
        pollfd ended{m_descriptor.get(), POLLIN, 0};
        poll(&ended, 1, LongestEnd);
        waitpid(m_id, nullptr, WNOHANG);
    }
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

bool Process::hasCrashed() const
{
    return WIFSIGNALED(m_status) && WTERMSIG(m_status) != SIGKILL;
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

void Process::detach()
{
    if (isRunning()) {
        close();
    }
}

void Process::close()
{
    m_id = -1;
    m_ended->setEnabled(false);
    m_descriptor.reset();
}

} // namespace voro::renderer
