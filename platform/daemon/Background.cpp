#include "Background.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace voro {

namespace {

[[noreturn]] void waitFor(pid_t daemon, const pps::Fd &readEnd)
{
    char byte;
    ssize_t size;
    do {
        size = read(readEnd.get(), &byte, 1);
    } while (size < 0 && errno == EINTR);
    if (size == 1) {
        _exit(0);
    }
    int status = 0;
    while (waitpid(daemon, &status, 0) < 0 && errno == EINTR) {
    }
    _exit(WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE);
}

// What a service manager (or a test) that started us with a notification socket waits for.
void notifyManager()
{
    const char *path = std::getenv("NOTIFY_SOCKET");
    sockaddr_un address{};
    if (path && *path == '/' && std::strlen(path) < sizeof address.sun_path) {
        address.sun_family = AF_UNIX;
        std::strcpy(address.sun_path, path);
        static constexpr char Message[] = "READY=1";
        const pps::Fd socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
        sendto(socket.get(), Message, sizeof Message - 1, MSG_NOSIGNAL, reinterpret_cast<const sockaddr *>(&address),
               sizeof address);
    }
    unsetenv("NOTIFY_SOCKET");
}

} // namespace

void Background::enter()
{
    // The daemon inherits no descriptors of the application.
    close_range(STDERR_FILENO + 1, ~0U, 0);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        std::perror("vorod: pipe");
        std::exit(EXIT_FAILURE);
    }
    pps::Fd readEnd(ends[0]);
    m_waiting.reset(ends[1]);
    const pid_t daemon = fork();
    if (daemon < 0) {
        std::perror("vorod: fork");
        std::exit(EXIT_FAILURE);
    }
    if (daemon > 0) {
        m_waiting.reset();
        waitFor(daemon, readEnd);
    }
    setsid();
}

void Background::ready()
{
    notifyManager();
    if (!m_waiting.isValid()) {
        return;
    }
    if (chdir("/") != 0) {
        std::perror("vorod: /");
    }
    const pps::Fd null(open("/dev/null", O_RDWR | O_CLOEXEC));
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(null.get(), standard);
    }
    // Clients can connect even if nobody waits any more.
    [[maybe_unused]] const ssize_t written = write(m_waiting.get(), "", 1);
    m_waiting.reset();
}

} // namespace voro
