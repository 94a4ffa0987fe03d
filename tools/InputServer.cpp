#include "InputServer.h"

#include "Output.h"

#include <QtCore/QRandomGenerator>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/sendfile.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

namespace voro {

namespace {

constexpr qint64 Piece = 64 * 1024;
constexpr qsizetype LongestRequest = 16 * 1024;

/** A path that nobody guesses, because every user of this machine can connect. */
QByteArray secretPath()
{
    QRandomGenerator *const random = QRandomGenerator::system();
    return '/' + QByteArray::number(random->generate64(), 16) + QByteArray::number(random->generate64(), 16);
}

/** Holds all signals off from the threads that are started meanwhile: they are the main thread's. */
class NoSignals {
public:
    NoSignals()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~NoSignals() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    NoSignals(const NoSignals &) = delete;
    NoSignals &operator=(const NoSignals &) = delete;

private:
    sigset_t m_before{};
};

} // namespace

InputServer::InputServer(int pipe, pps::Fd file, qint64 size, qint64 most)
    : m_pipe(pipe),
      m_file(std::move(file)),
      m_size(size),
      m_most(most),
      m_path(secretPath()),
      m_end(eventfd(0, EFD_CLOEXEC))
{
    listen();
    if (m_port != 0) {
        const NoSignals noSignals;
        m_thread = std::thread(&InputServer::run, this);
    }
}

InputServer::~InputServer()
{
    if (m_thread.joinable()) {
        eventfd_write(m_end.get(), 1);
        m_thread.join();
    }
}

QUrl InputServer::url() const
{
    return m_port == 0 ? QUrl() : QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_port) + QLatin1String(m_path));
}

void InputServer::listen()
{
    m_listener.reset(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *general = reinterpret_cast<sockaddr *>(&address);
    if (bind(m_listener.get(), general, length) == 0 && ::listen(m_listener.get(), SOMAXCONN) == 0
        && getsockname(m_listener.get(), general, &length) == 0) {
        m_port = ntohs(address.sin_port);
    }
}

void InputServer::run()
{
    while (true) {
        std::vector<pollfd> awaited{
            {m_end.get(), POLLIN, 0}, {m_listener.get(), POLLIN, 0}, {wantsInput() ? m_pipe : -1, POLLIN, 0}};
        for (const Reader &reader : m_readers) {
            const int sending = reader.position < m_size ? POLLOUT : 0;
            const int events = POLLRDHUP | (reader.position < 0 ? POLLIN : sending);
            awaited.push_back({reader.socket.get(), static_cast<short>(events), 0});
        }
        if (poll(awaited.data(), awaited.size(), -1) < 0 || awaited[0].revents != 0) {
            return;
        }
        for (size_t i = 0; i < m_readers.size(); ++i) {
            const auto events = awaited[i + 3].revents;
            m_readers[i].isGone = (events & (POLLERR | POLLHUP | POLLRDHUP)) != 0;
            if (events != 0 && !m_readers[i].isGone) {
                serve(m_readers[i]);
            }
        }
        if (awaited[1].revents != 0) {
            accept();
        }
        if (awaited[2].revents != 0) {
            takeInput();
        }
        const auto isDone = [this](const Reader &reader) {
            return reader.isGone || (m_isOver && reader.position == m_size);
        };
        m_readers.erase(std::remove_if(m_readers.begin(), m_readers.end(), isDone), m_readers.end());
    }
}

void InputServer::accept()
{
    pps::Fd socket(accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (socket.isValid()) {
        m_readers.push_back({.socket = std::move(socket), .request = {}});
    }
}

void InputServer::serve(Reader &reader)
{
    if (reader.position < 0) {
        receive(reader);
        return;
    }
    off_t position = reader.position;
    const auto left = static_cast<size_t>(std::min(m_size - reader.position, Piece));
    reader.isGone = sendfile(reader.socket.get(), m_file.get(), &position, left) < 0 && errno != EAGAIN;
    reader.position = position;
}

void InputServer::receive(Reader &reader)
{
    std::array<char, 4096> bytes{};
    const ssize_t count = recv(reader.socket.get(), bytes.data(), bytes.size(), 0);
    reader.request.append(bytes.data(), std::max<ssize_t>(count, 0));
    reader.isGone = count <= 0 || reader.request.size() > LongestRequest;
    if (reader.request.contains("\r\n\r\n")) {
        answer(reader);
    }
}

void InputServer::answer(Reader &reader)
{
    const char *status = "200 OK";
    if (!reader.request.startsWith("GET " + m_path + ' ')) {
        status = "404 Not Found";
    } else if (m_forgotten > 0) {
        status = "410 Gone";
    } else {
        reader.position = 0;
    }
    const QByteArray answer = QByteArray("HTTP/1.1 ") + status
                              + "\r\nContent-Type: application/octet-stream\r\nAccept-Ranges: none\r\n"
                                "Connection: close\r\n\r\n";
    const auto length = static_cast<size_t>(answer.size());
    const ssize_t sent = send(reader.socket.get(), answer.constData(), length, MSG_NOSIGNAL);
    reader.isGone = reader.position < 0 || sent != answer.size();
}

qint64 InputServer::takenByAll() const
{
    qint64 taken = m_size;
    bool hasReader = false;
    for (const Reader &reader : m_readers) {
        if (reader.position >= 0) {
            taken = std::min(taken, reader.position);
            hasReader = true;
        }
    }
    return hasReader ? taken : 0;
}

bool InputServer::wantsInput() const
{
    return !m_isOver && std::max(m_forgotten, takenByAll()) + m_most >= m_size + Piece;
}

/** Forgets what all have got when the file is full; false when that is not possible. */
bool InputServer::makeRoom()
{
    if (m_size - m_forgotten + Piece <= m_most) {
        return true;
    }
    const qint64 taken = takenByAll();
    const bool isForgotten =
        fallocate(m_file.get(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, m_forgotten, taken - m_forgotten) == 0;
    if (isForgotten) {
        m_forgotten = taken;
    }
    return isForgotten;
}

void InputServer::takeInput()
{
    std::array<char, Piece> bytes;
    const ssize_t count = read(m_pipe, bytes.data(), bytes.size());
    if (count <= 0) {
        endInput(count == 0 ? nullptr : strerror(errno));
    } else if (makeRoom() && pwrite(m_file.get(), bytes.data(), static_cast<size_t>(count), m_size) == count) {
        m_size += count;
    } else {
        endInput(strerror(errno));
    }
}

void InputServer::endInput(const char *problem)
{
    m_isOver = true;
    if (problem) {
        complain(QStringLiteral("play: standard input cannot be kept: %1").arg(QString::fromLocal8Bit(problem)));
    }
}

} // namespace voro
