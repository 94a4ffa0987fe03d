#include "Guardian.h"

#include <fcntl.h>
#include <pps/Fd.h>
#include <pps/FilePages.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace voro {

namespace {

/** How long a daemon may stay stopped. */
constexpr timespec LongestStop{0, 250'000'000};

constexpr int PassedOn[] = {SIGTERM, SIGINT, SIGHUP, SIGUSR1};

pid_t guarded = 0;

extern "C" void passOn(int signal)
{
    kill(guarded, signal);
}

/** Waits for the next change of the daemon's state; 0 when there is none, and no waiting is wanted. */
pid_t waitForChange(int &status, int options)
{
    pid_t changed;
    do {
        changed = waitpid(guarded, &status, WUNTRACED | WCONTINUED | options);
    } while (changed < 0 && errno == EINTR);
    return changed;
}

[[noreturn]] void endAs(int status)
{
    if (WIFSIGNALED(status)) {
        // The daemon's own core is the one that helps.
        prctl(PR_SET_DUMPABLE, 0);
        signal(WTERMSIG(status), SIG_DFL);
        raise(WTERMSIG(status));
    }
    _exit(WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE);
}

[[noreturn]] void watch()
{
    int status = 0;
    pid_t changed = waitForChange(status, 0);
    while (changed > 0) {
        if (WIFEXITED(status) || WIFSIGNALED(status)) {
            endAs(status);
        }
        if (WIFSTOPPED(status)) {
            nanosleep(&LongestStop, nullptr);
            changed = waitForChange(status, WNOHANG);
            if (changed > 0) {
                continue;
            }
            std::fprintf(stderr, "vorod: stopped, and so ended\n");
            kill(guarded, SIGKILL);
        }
        changed = waitForChange(status, 0);
    }
    _exit(EXIT_FAILURE);
}

} // namespace

void guard(bool isDetached)
{
    const pid_t guardian = getpid();
    // A signal that comes now waits until there is somebody to pass it on to.
    sigset_t passedOn;
    sigset_t before;
    sigemptyset(&passedOn);
    for (const int signal : PassedOn) {
        sigaddset(&passedOn, signal);
    }
    sigprocmask(SIG_BLOCK, &passedOn, &before);
    guarded = fork();
    if (guarded <= 0) {
        sigprocmask(SIG_SETMASK, &before, nullptr);
    }
    if (guarded < 0) {
        std::perror("vorod: fork");
        return;
    }
    if (guarded == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != guardian) {
            _exit(EXIT_FAILURE);
        }
        return;
    }
    struct sigaction action {};
    action.sa_handler = passOn;
    for (const int signal : PassedOn) {
        sigaction(signal, &action, nullptr);
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    close_range(STDERR_FILENO + 1, ~0U, 0);
    if (isDetached) {
        const pps::Fd null(open("/dev/null", O_RDWR | O_CLOEXEC));
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            dup2(null.get(), standard);
        }
        if (chdir("/") != 0) {
            _exit(EXIT_FAILURE);
        }
    }
    pps::releaseFilePages();
    watch();
}

} // namespace voro
