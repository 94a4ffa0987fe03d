#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <pps/Fd.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <functional>
#include <thread>
#include <utility>
#include <vector>

/** Whether there is an event at the descriptor; false as soon as the end can be read. */
inline bool waitFor(int descriptor, short event, int end)
{
    pollfd polled[] = {{descriptor, event, 0}, {end, POLLIN, 0}};
    return poll(polled, 2, -1) > 0 && polled[1].revents == 0;
}

/** One request of a client, and the way to answer it. */
class HttpExchange {
public:
    /** Reads the request's head. Whatever waits does so until the descriptor `end` can be read. */
    HttpExchange(int socket, int end) : m_socket(socket), m_end(end)
    {
        while (!m_head.contains("\r\n\r\n") && wait(POLLIN)) {
            char bytes[4096];
            const ssize_t size = recv(m_socket, bytes, sizeof bytes, 0);
            if (size <= 0) {
                break;
            }
            m_head.append(bytes, size);
        }
        m_path = m_head.split(' ').value(1);
    }

    QByteArray path() const { return m_path; }
    /** A field of the request's head by its name in lower case, empty without. */
    QByteArray field(const QByteArray &name) const
    {
        for (const QByteArray &line : m_head.split('\n')) {
            if (line.toLower().startsWith(name + ':')) {
                return line.mid(name.size() + 1).trimmed();
            }
        }
        return {};
    }

    /**
     * Sends a head with a status like "200 OK" and further fields, each with its line end; false when the client is
     * gone.
     */
    bool sendHead(const QByteArray &status, const QByteArray &fields = {})
    {
        return send("HTTP/1.1 " + status + "\r\nConnection: close\r\n" + fields + "\r\n");
    }
    /** Sends bytes as they are; false when the client is gone. */
    bool send(const QByteArray &bytes)
    {
        for (qsizetype sent = 0; sent < bytes.size();) {
            if (!wait(POLLOUT)) {
                return false;
            }
            const ssize_t size = ::send(m_socket, bytes.constData() + sent, static_cast<size_t>(bytes.size() - sent),
                                        MSG_NOSIGNAL | MSG_DONTWAIT);
            if (size <= 0) {
                return false;
            }
            sent += size;
        }
        return true;
    }
    /** Sends a file's content, from where the client wants it. */
    void sendRange(const QByteArray &content)
    {
        const QByteArray range = field("range");
        const qsizetype start = range.mid(static_cast<qsizetype>(strlen("bytes="))).split('-').first().toLongLong();
        const QByteArray size = QByteArray::number(content.size());
        const QByteArray part = content.mid(start);
        QByteArray fields = "Accept-Ranges: bytes\r\nContent-Length: " + QByteArray::number(part.size()) + "\r\n";
        if (!range.isEmpty()) {
            fields += "Content-Range: bytes " + QByteArray::number(start) + '-' + QByteArray::number(content.size() - 1)
                      + '/' + size + "\r\n";
        }
        sendHead(range.isEmpty() ? "200 OK" : "206 Partial Content", fields) && send(part);
    }
    /** Says nothing more until the client goes. */
    void stall()
    {
        char byte;
        while (wait(POLLIN) && recv(m_socket, &byte, 1, 0) > 0) {
        }
    }
    /** Ends the connection as a broken network does. */
    void reset()
    {
        const linger now{1, 0};
        setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &now, sizeof now);
    }

private:
    /** Waits for an event of the socket; false when the server ends. */
    bool wait(short event) const { return waitFor(m_socket, event, m_end); }

    int m_socket;
    int m_end;
    QByteArray m_head;
    QByteArray m_path;
};

/** A web server in threads of its own, because a test that calls the renderer waits for it. */
class HttpServer {
public:
    using Handler = std::function<void(HttpExchange &)>;

    /** Serves on a free port; each request has a connection and a thread of its own. */
    explicit HttpServer(Handler handler)
        : m_handler(std::move(handler)),
          m_end(eventfd(0, EFD_CLOEXEC)),
          m_listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto *generic = reinterpret_cast<sockaddr *>(&address);
        if (bind(m_listener.get(), generic, length) != 0 || listen(m_listener.get(), 16) != 0
            || getsockname(m_listener.get(), generic, &length) != 0) {
            qFatal("no port to serve on");
        }
        m_address = "http://127.0.0.1:" + QByteArray::number(ntohs(address.sin_port));
        m_acceptor = std::thread([this] { acceptAll(); });
    }
    ~HttpServer()
    {
        eventfd_write(m_end.get(), 1);
        m_acceptor.join();
        for (std::thread &connection : m_connections) {
            connection.join();
        }
    }
    HttpServer(const HttpServer &) = delete;
    HttpServer &operator=(const HttpServer &) = delete;

    QByteArray url(const QByteArray &path) const { return m_address + path; }

private:
    void acceptAll()
    {
        while (waitFor(m_listener.get(), POLLIN, m_end.get())) {
            voro::pps::Fd socket(accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
            m_connections.emplace_back([this, socket = std::move(socket)] {
                HttpExchange exchange(socket.get(), m_end.get());
                if (!exchange.path().isEmpty()) {
                    m_handler(exchange);
                }
            });
        }
    }

    Handler m_handler;
    QByteArray m_address;
    voro::pps::Fd m_end;
    voro::pps::Fd m_listener;
    std::vector<std::thread> m_connections;
    std::thread m_acceptor;
};
