#include "ServiceManager.h"

#include <fcntl.h>
#include <poll.h>
#include <pps/Fd.h>
#include <pps/Start.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <vector>

extern char **environ;

namespace voro {

namespace {

/** A manager that takes longer, in milliseconds, is left alone. */
constexpr int LongestAnswer = 10'000;

/** Runs a program of the service manager; whether it did what it was asked for. */
bool run(std::vector<std::string> arguments)
{
    std::vector<char *> pointers;
    for (std::string &argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    // What fails here is done in another way.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int failure = posix_spawnp(&process, pointers.front(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        return false;
    }
    const pps::Fd handle(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    pollfd end{handle.get(), POLLIN, 0};
    int ready;
    do {
        ready = poll(&end, 1, LongestAnswer);
    } while (ready < 0 && errno == EINTR);
    if (ready == 0) {
        kill(process, SIGKILL);
    }
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::vector<std::string> environment()
{
    std::vector<std::string> variables;
    for (char **variable = environ; variable && *variable; ++variable) {
        if (pps::isForDaemon(*variable)) {
            variables.emplace_back(*variable);
        }
    }
    return variables;
}

} // namespace

bool startByManager(const std::string &program, const std::string &folder)
{
    const char *session = std::getenv("XDG_RUNTIME_DIR");
    if (!session || access((std::string(session) + "/systemd/private").c_str(), F_OK) != 0) {
        return false;
    }
    const std::vector<std::string> variables = environment();
    const bool hasSettings = std::any_of(variables.begin(), variables.end(),
                                         [](const std::string &variable) { return variable.starts_with("VORO_"); });
    if (!hasSettings && folder == std::string(session) + "/voro"
        && run({"systemctl", "--user", "--quiet", "start", "vorod.socket"})) {
        return true;
    }
    std::vector<std::string> arguments{"systemd-run",
                                       "--user",
                                       "--quiet",
                                       "--collect",
                                       "--description=Multimedia services",
                                       "--property=Type=notify",
                                       "--property=NotifyAccess=all",
                                       "--property=KillMode=process",
                                       "--property=OOMPolicy=continue",
                                       "--property=UMask=0077",
                                       "--property=NoNewPrivileges=yes"};
    for (const std::string &variable : variables) {
        arguments.push_back("--setenv=" + variable);
    }
    arguments.insert(arguments.end(), {program, "--idle-exit", "30"});
    return run(std::move(arguments));
}

} // namespace voro
