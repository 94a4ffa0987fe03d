#pragma once

#include <QtCore/QByteArray>

#include <pps/Fd.h>

#include <functional>
#include <thread>
#include <vector>

/** One request of a client, and the way to answer it. */
class HttpExchange {
public:
    /** Reads the request's head. Whatever waits does so until the descriptor `end` can be read. */
    HttpExchange(int socket, int end);

    QByteArray path() const { return m_path; }
    /** A field of the request's head by its name in lower case, empty without. */
    QByteArray field(const QByteArray &name) const;

    /**
     * Sends a head with a status like "200 OK" and further fields, each with its line end; false when the client is
     * gone.
     */
    bool sendHead(const QByteArray &status, const QByteArray &fields = {});
    /** Sends bytes as they are; false when the client is gone. */
    bool send(const QByteArray &bytes);
    /** Sends a file's content, from where the client wants it. */
    void sendRange(const QByteArray &content);
    /** Says nothing more until the client goes. */
    void stall();
    /** Ends the connection as a broken network does. */
    void reset();

private:
    /** Waits for an event of the socket; false when the server ends. */
    bool wait(short event) const;

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
    explicit HttpServer(Handler handler);
    ~HttpServer();
    HttpServer(const HttpServer &) = delete;
    HttpServer &operator=(const HttpServer &) = delete;

    QByteArray url(const QByteArray &path) const { return m_address + path; }

private:
    void acceptAll();

    Handler m_handler;
    QByteArray m_address;
    voro::pps::Fd m_end;
    voro::pps::Fd m_listener;
    std::vector<std::thread> m_connections;
    std::thread m_acceptor;
};
