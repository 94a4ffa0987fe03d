#include "Link.h"

#include <glib-unix.h>
#include <pps/Log.h>
#include <renderer/common/Protocol.h>

namespace voro::renderer {

namespace {

constexpr unsigned PublishSubscribe = 3;

} // namespace

bool Link::open(Handler handler, std::function<void()> onEnd)
{
    m_handler = std::move(handler);
    m_onEnd = std::move(onEnd);
    if (!m_connection.openOn(WorkerSocket, WorkerPath, PublishSubscribe)) {
        return false;
    }
    m_source.reset(
        g_unix_fd_add(m_connection.fd(), static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR), onReadable, this));
    return true;
}

gboolean Link::onReadable(gint, GIOCondition, gpointer self)
{
    auto *link = static_cast<Link *>(self);
    if (link->readAll()) {
        return G_SOURCE_CONTINUE;
    }
    link->m_source.forget();
    link->m_onEnd();
    return G_SOURCE_REMOVE;
}

bool Link::readAll()
{
    for (std::string text; m_connection.read(text, false);) {
        if (text.empty()) {
            return true;
        }
        log::detail(log::Category::Worker, "gets", text);
        pps::Message message;
        if (message.parse(text)) {
            m_handler(message);
        }
    }
    return false;
}

void Link::send(std::string_view lines)
{
    log::detail(log::Category::Worker, "says", lines);
    m_connection.write(lines);
}

} // namespace voro::renderer
