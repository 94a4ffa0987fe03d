#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QProcess>
#include <QtCore/QtGlobal>

#include <functional>

struct xcb_connection_t;

/** An X server of the test's own, without a screen that anybody sees. */
class XServer {
public:
    /** Starts the server and makes it this process's and its children's display. */
    XServer();
    ~XServer();
    XServer(const XServer &) = delete;
    XServer &operator=(const XServer &) = delete;

    /** Makes a visible window and returns its id. */
    quint32 makeWindow(int x, int y, int width, int height);
    void destroyWindow(quint32 window);

    /** What is mapped into the server's memory, a line each, as /proc tells. */
    QByteArray maps() const;

    /** How many pixels of a window's area are of such a colour. */
    int count(quint32 window, int x, int y, int width, int height, const std::function<bool(quint32 rgb)> &isMeant);

private:
    QProcess m_process;
    xcb_connection_t *m_connection = nullptr;
};
