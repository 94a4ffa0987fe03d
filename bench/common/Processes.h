#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace bench {

/** What a process costs at this moment. */
struct Usage {
    long pss = 0;       ///< kB, shared pages divided among those who share them
    long rss = 0;       ///< kB, shared pages in full
    long anonymous = 0; ///< kB, heaps and stacks: no file's pages
    int threads = 0;
    int descriptors = 0;
};
Usage usage(pid_t process);
/** Of several processes together. */
Usage usage(const std::vector<pid_t> &processes);

/** Processor time that a process has used, in seconds; threads that ended count. */
double processorTime(pid_t process);

/** How often the threads that a process has by now were woken so far. */
long wakeups(pid_t process);

/** The process of the daemon that serves this run, as VORO_BENCH_DAEMON names it. */
pid_t daemonProcess();

/** The process that started the given one, or took it over. */
pid_t parentOf(pid_t process);

/** How many descendants a daemon has when every player rests: its second process, the nursery's two, a spare worker. */
constexpr size_t Resting = 4;

/** Every process below the given one. */
std::vector<pid_t> descendants(pid_t process);

/** The memory of the daemon and of all below it, in kB: shared pages divided. */
long servicePss();

/**
 * Waits until no process comes or goes below the given one and none is busy: a spare worker is started a moment after
 * the last one was given out, and loads its plugins.
 */
void waitForCalm(pid_t process);

/** Waits until one of the processes has ended; false when none did in time. */
bool waitForEnd(const std::vector<pid_t> &processes, int milliseconds);

/** A child process with its standard input and output. */
class Child {
public:
    explicit Child(const std::vector<std::string> &arguments);
    ~Child();
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    pid_t process() const { return m_process; }
    /** The next line of its output, empty at the end. */
    std::string line();
    void send(const std::string &line);
    /** Closes its input and waits for its end; one that hangs is killed. */
    void finish();

private:
    pid_t m_process = -1;
    int m_input = -1;
    int m_output = -1;
    std::string m_buffer;
};

} // namespace bench
