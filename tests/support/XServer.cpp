#include "XServer.h"

#include <QtCore/QFile>

#include <sys/prctl.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace {

void sync(xcb_connection_t *connection)
{
    free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

} // namespace

XServer::XServer()
{
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.start(QStringLiteral("Xvfb"), {"-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
    QByteArray display;
    while (!display.endsWith('\n')) {
        if (!m_process.waitForReadyRead(20'000)) {
            qFatal("No X server: %s", m_process.readAllStandardError().constData());
        }
        display += m_process.readAllStandardOutput();
    }
    qputenv("DISPLAY", ':' + display.trimmed());
    m_connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(m_connection)) {
        qFatal("The X server does not answer");
    }
}

XServer::~XServer()
{
    xcb_disconnect(m_connection);
    m_process.kill();
    m_process.waitForFinished();
}

quint32 XServer::makeWindow(int x, int y, int width, int height)
{
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    const xcb_window_t window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, screen->root, static_cast<qint16>(x),
                      static_cast<qint16>(y), static_cast<quint16>(width), static_cast<quint16>(height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_BACK_PIXEL, &screen->black_pixel);
    xcb_map_window(m_connection, window);
    sync(m_connection);
    return window;
}

void XServer::destroyWindow(quint32 window)
{
    xcb_destroy_window(m_connection, window);
    sync(m_connection);
}

QByteArray XServer::maps() const
{
    QFile file(QStringLiteral("/proc/%1/maps").arg(m_process.processId()));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

int XServer::count(quint32 window, int x, int y, int width, int height, const std::function<bool(quint32 rgb)> &isMeant)
{
    const auto cookie =
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<qint16>(x), static_cast<qint16>(y),
                      static_cast<quint16>(width), static_cast<quint16>(height), ~0U);
    xcb_get_image_reply_t *image = xcb_get_image_reply(m_connection, cookie, nullptr);
    if (!image) {
        return -1;
    }
    const auto *pixels = reinterpret_cast<const quint32 *>(xcb_get_image_data(image));
    const int result = static_cast<int>(std::count_if(pixels, pixels + xcb_get_image_data_length(image) / 4, isMeant));
    free(image);
    return result;
}
