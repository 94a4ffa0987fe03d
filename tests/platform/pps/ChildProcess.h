#pragma once

#include <sys/socket.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>

/** A forked process that runs a function; it is killed, if still there, when this is destroyed. */
class ChildProcess {
public:
    /** The function's result is the exit status. */
    explicit ChildProcess(const std::function<int(ChildProcess &)> &function)
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
    ~ChildProcess()
    {
        kill();
        close(m_socket);
    }
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    /** In the parent: the child's process; 0 after its end. */
    pid_t process() const { return m_process; }

    /** Lets the other process's hear() return. */
    void say() { [[maybe_unused]] const ssize_t sent = send(m_socket, "!", 1, MSG_NOSIGNAL); }
    /** Waits until the other process said something; false when it ended without. */
    bool hear()
    {
        char byte;
        return read(m_socket, &byte, 1) == 1;
    }
    /** In the child: waits until the parent ends it. */
    [[noreturn]] void sleep()
    {
        for (;;) {
            pause();
        }
    }
    /** In the parent: waits for its end; the exit status, -1 when a signal ended it. */
    int wait()
    {
        int status = 0;
        if (m_process > 0) {
            waitpid(m_process, &status, 0);
            m_process = 0;
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    void kill()
    {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            wait();
        }
    }

private:
    pid_t m_process;
    int m_socket;
};
