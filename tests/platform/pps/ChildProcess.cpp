#include "ChildProcess.h"

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

ChildProcess::ChildProcess(const std::function<int(ChildProcess &)> &function)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        std::abort();
    }
    m_process = fork();
    m_socket = ends[m_process == 0];
    close(ends[m_process != 0]);
    if (m_process == 0) {
        _exit(function(*this));
    }
}

ChildProcess::~ChildProcess()
{
    kill();
    close(m_socket);
}

void ChildProcess::say()
{
    [[maybe_unused]] const ssize_t sent = send(m_socket, "!", 1, MSG_NOSIGNAL);
}

bool ChildProcess::hear()
{
    char byte;
    return read(m_socket, &byte, 1) == 1;
}

void ChildProcess::sleep()
{
    for (;;) {
        pause();
    }
}

int ChildProcess::wait()
{
    int status = 0;
    if (m_process > 0) {
        waitpid(m_process, &status, 0);
        m_process = 0;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void ChildProcess::kill()
{
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
        wait();
    }
}
