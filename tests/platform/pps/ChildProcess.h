#pragma once

#include <sys/types.h>

#include <functional>

/** A forked process that runs a function; it is killed, if still there, when this is destroyed. */
class ChildProcess {
public:
    /** The function's result is the exit status. */
    explicit ChildProcess(const std::function<int(ChildProcess &)> &function);
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    /** In the parent: the child's process; 0 after its end. */
    pid_t process() const { return m_process; }

    /** Lets the other process's hear() return. */
    void say();
    /** Waits until the other process said something; false when it ended without. */
    bool hear();
    /** In the child: waits until the parent ends it. */
    [[noreturn]] void sleep();
    /** In the parent: waits for its end; the exit status, -1 when a signal ended it. */
    int wait();
    void kill();

private:
    pid_t m_process;
    int m_socket;
};
