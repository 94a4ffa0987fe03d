#include "Processes.h"

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>

extern char **environ;

namespace bench {

namespace {

template<typename Function>
void forEachEntry(const std::string &folder, Function function)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> directory(opendir(folder.c_str()), closedir);
    while (directory) {
        const dirent *entry = readdir(directory.get());
        if (!entry) {
            return;
        }
        function(std::string(entry->d_name));
    }
}

std::string processFolder(pid_t process)
{
    return "/proc/" + std::to_string(process);
}

std::vector<pid_t> processes()
{
    std::vector<pid_t> result;
    forEachEntry("/proc", [&](const std::string &name) {
        if (!name.empty() && std::all_of(name.begin(), name.end(), isdigit)) {
            result.push_back(std::atoi(name.c_str()));
        }
    });
    return result;
}

/** The value of a line "Name: value" of a file of /proc. */
std::string field(const std::string &path, const std::string &name)
{
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(name + ":")) {
            return line.substr(line.find_first_not_of(" \t", name.size() + 1));
        }
    }
    return {};
}

} // namespace

Usage usage(pid_t process)
{
    Usage result;
    const std::string folder = processFolder(process);
    const auto memory = [&](const char *name) { return std::atol(field(folder + "/smaps_rollup", name).c_str()); };
    result.pss = memory("Pss");
    result.rss = memory("Rss");
    result.anonymous = memory("Anonymous");
    result.threads = std::atoi(field(folder + "/status", "Threads").c_str());
    forEachEntry(folder + "/fd", [&](const std::string &name) { result.descriptors += name[0] != '.'; });
    return result;
}

Usage usage(const std::vector<pid_t> &processes)
{
    Usage sum;
    for (const pid_t process : processes) {
        const Usage one = usage(process);
        sum.pss += one.pss;
        sum.rss += one.rss;
        sum.anonymous += one.anonymous;
        sum.threads += one.threads;
        sum.descriptors += one.descriptors;
    }
    return sum;
}

double processorTime(pid_t process)
{
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) {
        return 0;
    }
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

long wakeups(pid_t process)
{
    long sum = 0;
    const std::string tasks = processFolder(process) + "/task";
    forEachEntry(tasks, [&](const std::string &name) {
        sum += std::atol(field(tasks + '/' + name + "/status", "voluntary_ctxt_switches").c_str());
    });
    return sum;
}

pid_t daemonProcess()
{
    const char *daemon = std::getenv("VORO_BENCH_DAEMON");
    if (!daemon) {
        std::fprintf(stderr, "VORO_BENCH_DAEMON is not set\n");
        std::exit(2);
    }
    return std::atoi(daemon);
}

long servicePss()
{
    return usage(daemonProcess()).pss + usage(descendants(daemonProcess())).pss;
}

pid_t parentOf(pid_t process)
{
    return std::atoi(field(processFolder(process) + "/status", "PPid").c_str());
}

std::vector<pid_t> descendants(pid_t process)
{
    std::vector<pid_t> result;
    for (const pid_t other : processes()) {
        if (parentOf(other) != process) {
            continue;
        }
        result.push_back(other);
        const auto below = descendants(other);
        result.insert(result.end(), below.begin(), below.end());
    }
    return result;
}

void waitForCalm(pid_t process)
{
    constexpr double Busy = 0.1;
    constexpr auto Period = std::chrono::milliseconds(500);
    const auto used = [](const std::vector<pid_t> &processes) {
        double sum = 0;
        for (const pid_t one : processes) {
            sum += processorTime(one);
        }
        return sum;
    };
    for (int i = 0; i < 20; ++i) {
        const auto before = descendants(process);
        const double usedBefore = used(before);
        const bool hasEnded = waitForEnd(before, static_cast<int>(Period.count()));
        if (!hasEnded && descendants(process) == before
            && used(before) - usedBefore < Busy * std::chrono::duration<double>(Period).count()) {
            return;
        }
    }
}

bool waitForEnd(const std::vector<pid_t> &processes, int milliseconds)
{
    std::vector<pollfd> ends;
    for (const pid_t process : processes) {
        ends.push_back({static_cast<int>(syscall(SYS_pidfd_open, process, 0)), POLLIN, 0});
    }
    // One that could not be opened has ended already.
    const bool hasEnded = std::any_of(ends.begin(), ends.end(), [](const pollfd &end) { return end.fd < 0; })
                          || poll(ends.data(), ends.size(), milliseconds) > 0;
    for (const pollfd &end : ends) {
        if (end.fd >= 0) {
            close(end.fd);
        }
    }
    return hasEnded;
}

Child::Child(const std::vector<std::string> &arguments)
{
    int input[2];
    int output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) {
        std::abort();
    }
    std::vector<char *> list;
    for (const std::string &argument : arguments) {
        list.push_back(const_cast<char *>(argument.c_str()));
    }
    list.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], 0);
    posix_spawn_file_actions_adddup2(&actions, output[1], 1);
    if (posix_spawnp(&m_process, list[0], &actions, nullptr, list.data(), environ) != 0) {
        std::fprintf(stderr, "%s cannot be started\n", list[0]);
        std::abort();
    }
    posix_spawn_file_actions_destroy(&actions);
    close(input[0]);
    close(output[1]);
    m_input = input[1];
    m_output = output[0];
}

Child::~Child()
{
    finish();
}

std::string Child::line()
{
    for (;;) {
        if (const size_t end = m_buffer.find('\n'); end != std::string::npos) {
            const std::string result = m_buffer.substr(0, end);
            m_buffer.erase(0, end + 1);
            return result;
        }
        char bytes[4096];
        const ssize_t count = read(m_output, bytes, sizeof bytes);
        if (count <= 0) {
            return {};
        }
        m_buffer.append(bytes, static_cast<size_t>(count));
    }
}

void Child::send(const std::string &line)
{
    const std::string text = line + "\n";
    if (write(m_input, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        std::abort();
    }
}

void Child::finish()
{
    if (m_process < 0) {
        return;
    }
    close(m_input);
    const bool hasHung = !waitForEnd({m_process}, 10'000);
    if (hasHung) {
        std::fprintf(stderr, "a measured process hung\n");
        kill(m_process, SIGKILL);
    }
    int status = 0;
    waitpid(m_process, &status, 0);
    close(m_output);
    m_process = -1;
    if (hasHung) {
        return;
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "a measured process failed\n");
        std::abort();
    }
}

} // namespace bench
