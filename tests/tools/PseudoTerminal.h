#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayList>

#include <sys/types.h>

#include <optional>

/** A program that runs in a terminal of its own, which the test looks at and types into. */
class PseudoTerminal {
public:
    /** Starts the program in a terminal of 80 columns. */
    explicit PseudoTerminal(const QByteArrayList &command);
    /** Kills the program if it still runs. */
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    pid_t processId() const { return m_process; }
    void type(const QByteArray &keys);
    void resize(unsigned short columns);
    /**
     * Waits until the text is written and forgets what was written up to its end; false when the program ends first,
     * or when nothing comes for a minute.
     */
    bool waitFor(const QByteArray &text);
    /** Waits for the end of the program; nothing when a signal ended it. */
    std::optional<int> waitForEnd();
    /** Waits until the program is stopped by a signal. */
    bool waitForStop();

    /** Whether the terminal waits for whole lines and echoes, as it did before the program started. */
    bool isInOwnMode() const;
    /** What was written since the last waitFor(). */
    const QByteArray &written() const { return m_written; }

private:
    bool readSome();

    int m_master = -1;
    /** The program's end, held open so that the terminal outlives the program. */
    int m_slave = -1;
    int m_processDescriptor = -1;
    pid_t m_process = -1;
    QByteArray m_written;
};
