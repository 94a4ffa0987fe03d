#include "Link.h"

#include <glib-unix.h>
#include <renderer/common/Protocol.h>
#include <unistd.h>

namespace voro::renderer {

namespace {

constexpr unsigned PublishSubscribe = 3;

} // namespace

bool Link::open(Handler handler)
{
    m_handler = std::move(handler);
    if (!m_connection.openOn(WorkerSocket, WorkerPath, PublishSubscribe)) {
        return false;
    }
    m_source.reset(
        g_unix_fd_add(m_connection.fd(), static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR), onReadable, this));
    return true;
}

gboolean Link::onReadable(gint, GIOCondition, gpointer self)
{
    static_cast<Link *>(self)->readAll();
    return G_SOURCE_CONTINUE;
}

void Link::readAll()
{
    for (std::string text; m_connection.read(text, false);) {
        if (text.empty()) {
            return;
        }
        pps::Message message;
        if (message.parse(text)) {
            m_handler(message);
        }
    }
    // The daemon is gone or has no more use for this worker. Nothing here has to be put in order.
    _exit(0);
}

void Link::send(std::string_view lines)
{
    m_connection.write(lines);
}

} // namespace voro::renderer
