#pragma once

#include "Program.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <optional>
#include <vector>

/** A program that runs in a terminal of its own, which the test looks at and types into. */
class PseudoTerminal {
public:
    /** Starts the program in a terminal of 80 columns. */
    explicit PseudoTerminal(const QByteArrayList &command)
    {
        std::vector<char *> arguments;
        for (const QByteArray &argument : command) {
            arguments.push_back(const_cast<char *>(argument.constData()));
        }
        arguments.push_back(nullptr);
        const winsize size{.ws_row = 24, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
        m_process = forkpty(&m_master, nullptr, nullptr, &size);
        if (m_process == 0) {
            execv(arguments[0], arguments.data());
            _exit(127);
        }
        if (m_process < 0) {
            qFatal("cannot make a terminal");
        }
        m_slave = open(ptsname(m_master), O_RDWR | O_NOCTTY | O_CLOEXEC);
        m_processDescriptor = static_cast<int>(syscall(SYS_pidfd_open, m_process, 0));
        if (m_slave < 0 || m_processDescriptor < 0) {
            qFatal("cannot open the terminal");
        }
    }
    /** Kills the program if it still runs. */
    ~PseudoTerminal()
    {
        if (m_process > 0) {
            kill(m_process, SIGKILL);
            waitpid(m_process, nullptr, 0);
        }
        for (int descriptor : {m_master, m_slave, m_processDescriptor}) {
            close(descriptor);
        }
    }
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    pid_t processId() const { return m_process; }
    void type(const QByteArray &keys)
    {
        if (write(m_master, keys.constData(), static_cast<size_t>(keys.size())) != keys.size()) {
            qFatal("cannot type");
        }
    }
    void resize(unsigned short columns)
    {
        const winsize size{.ws_row = 24, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
        if (ioctl(m_master, TIOCSWINSZ, &size) != 0) {
            qFatal("cannot resize the terminal");
        }
    }
    /**
     * Waits until the text is written and forgets what was written up to its end; false when the program ends first,
     * or when nothing comes for a minute.
     */
    bool waitFor(const QByteArray &text)
    {
        for (;;) {
            if (const auto at = m_written.indexOf(text); at >= 0) {
                m_written.remove(0, at + text.size());
                return true;
            }
            if (!readSome()) {
                return false;
            }
        }
    }
    /** Waits for the end of the program; nothing when a signal ended it. */
    std::optional<int> waitForEnd()
    {
        while (readSome()) {
        }
        int status = 0;
        if (waitpid(m_process, &status, WNOHANG) != m_process) {
            return std::nullopt;
        }
        m_process = -1;
        return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
    }
    /** Waits until the program is stopped by a signal. */
    bool waitForStop()
    {
        int status = 0;
        return waitpid(m_process, &status, WUNTRACED) == m_process && WIFSTOPPED(status);
    }

    /** Whether the terminal waits for whole lines and echoes, as it did before the program started. */
    bool isInOwnMode() const
    {
        termios mode{};
        return tcgetattr(m_slave, &mode) == 0 && (mode.c_lflag & ICANON) && (mode.c_lflag & ECHO);
    }
    /** What was written since the last waitFor(). */
    const QByteArray &written() const { return m_written; }

private:
    bool readSome()
    {
        std::array<pollfd, 2> polled{{{m_master, POLLIN, 0}, {m_processDescriptor, POLLIN, 0}}};
        if (poll(polled.data(), polled.size(), PatienceMs) <= 0 || !(polled[0].revents & POLLIN)) {
            return false;
        }
        std::array<char, 4096> bytes;
        const auto count = read(m_master, bytes.data(), bytes.size());
        if (count > 0) {
            m_written.append(bytes.data(), count);
        }
        return count > 0;
    }

    int m_master = -1;
    /** The program's end, held open so that the terminal outlives the program. */
    int m_slave = -1;
    int m_processDescriptor = -1;
    pid_t m_process = -1;
    QByteArray m_written;
};
