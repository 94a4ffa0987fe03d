#include "Process.h"

#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <utility>

extern char **environ;

namespace voro::renderer {

Process::Process(const std::string &program, std::initializer_list<Socket> sockets)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const Socket &socket : sockets) {
        posix_spawn_file_actions_adddup2(&actions, socket.descriptor, socket.number);
    }
    char *const arguments[] = {const_cast<char *>(program.c_str()), nullptr};
    const int error = posix_spawn(&m_id, program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        m_id = -1;
        std::fprintf(stderr, "vorod: %s: %s\n", program.c_str(), std::strerror(error));
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
    m_id = -1;
    m_ended->setEnabled(false);
    close(m_descriptor);
}

} // namespace voro::renderer
