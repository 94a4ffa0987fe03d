#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QUrl>

#include <pps/Fd.h>

#include <thread>
#include <vector>

namespace voro {

/**
 * Hands what comes through a pipe to the players of this machine while it comes, over HTTP, from a thread of its own.
 * What has come is kept in a file. When that is full, the pipe waits until a player has got more of it; what all
 * players have got is forgotten then, and the beginning can be had no more.
 */
class InputServer {
public:
    /** The file's first `size` bytes have come already; it never takes more than `most` bytes on the disk. */
    InputServer(int pipe, pps::Fd file, qint64 size, qint64 most);
    ~InputServer();
    InputServer(const InputServer &) = delete;
    InputServer &operator=(const InputServer &) = delete;

    /** Known to this user's programs only. Empty when this machine offers no way. */
    QUrl url() const;

private:
    struct Reader {
        pps::Fd socket;
        QByteArray request;
        /** How much it has got; -1 before it has asked. */
        qint64 position = -1;
        bool isGone = false;
    };

    void listen();
    void run();
    void accept();
    void serve(Reader &reader);
    void receive(Reader &reader);
    void answer(Reader &reader);
    bool wantsInput() const;
    void takeInput();
    bool makeRoom();
    /** Up to where all have got it that have asked for it. */
    qint64 takenByAll() const;
    void endInput(const char *problem);

    const int m_pipe;
    const pps::Fd m_file;
    qint64 m_size;
    const qint64 m_most;
    qint64 m_forgotten = 0;
    bool m_isOver = false;
    const QByteArray m_path;
    pps::Fd m_listener;
    pps::Fd m_end;
    quint16 m_port = 0;
    std::vector<Reader> m_readers;
    std::thread m_thread;
};

} // namespace voro
