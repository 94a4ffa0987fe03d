#include "FrameChannel.h"

#include <glib-unix.h>
#include <pps/FdPassing.h>

#include <array>
#include <cerrno>
#include <utility>

namespace voro::renderer {

FrameChannel::~FrameChannel()
{
    const std::lock_guard lock(m_mutex);
    disconnect();
}

void FrameChannel::connect(pps::Fd socket)
{
    const std::lock_guard lock(m_mutex);
    disconnect();
    m_socket = std::move(socket);
    m_source.reset(
        g_unix_fd_add(m_socket.get(), static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR), onReadable, this));
}

void FrameChannel::disconnect()
{
    m_source.reset();
    m_socket.reset();
    m_formats = 0;
    m_ring.reset();
}

void FrameChannel::show(GstBuffer *picture, const GstVideoInfo &info)
{
    const std::lock_guard lock(m_mutex);
    m_picture.reset(gst_buffer_ref(picture));
    m_info = info;
    ++m_serial;
    m_isSent = false;
    sendPicture();
}

void FrameChannel::clear()
{
    const std::lock_guard lock(m_mutex);
    if (std::exchange(m_picture, nullptr) && m_formats != 0) {
        pps::sendPacket(m_socket.get(), bytesOf(FrameClear()));
    }
}

void FrameChannel::sendPicture()
{
    if (m_formats == 0 || !m_picture || !renewRing()) {
        return;
    }
    const auto slot = m_ring->takeSlot();
    m_isSent = slot && m_ring->fill(*slot, m_picture.get(), m_serial) && sendFrame(*slot);
    if (slot && !m_isSent) {
        m_ring->freeSlot(*slot);
    }
}

bool FrameChannel::sendFrame(uint32_t slot)
{
    FrameReady frame;
    frame.generation = m_ring->generation();
    frame.slot = slot;
    frame.serial = m_serial;
    frame.time = g_get_monotonic_time() * 1000;
    return pps::sendPacket(m_socket.get(), bytesOf(frame));
}

/** Sees to it that there is a ring for the present pictures. */
bool FrameChannel::renewRing()
{
    if (m_ring && m_ring->fits(m_info, m_formats)) {
        return true;
    }
    m_ring = FrameRingWriter::make(m_info, m_formats, ++m_generation);
    if (m_ring && !pps::sendPacket(m_socket.get(), m_ring->description(), m_ring->descriptor())) {
        m_ring.reset();
    }
    return m_ring != nullptr;
}

gboolean FrameChannel::onReadable(gint, GIOCondition, gpointer self)
{
    auto *channel = static_cast<FrameChannel *>(self);
    const std::lock_guard lock(channel->m_mutex);
    if (channel->readAll()) {
        return G_SOURCE_CONTINUE;
    }
    channel->m_source.forget();
    channel->disconnect();
    return G_SOURCE_REMOVE;
}

/** False when the item is gone, or says what none would. */
bool FrameChannel::readAll()
{
    for (;;) {
        std::array<std::byte, MaximumFramePacket> packet;
        pps::Fd passed;
        const ssize_t size = pps::receivePacket(m_socket.get(), packet, passed);
        if (size < 0 && errno == EAGAIN) {
            return true;
        }
        if (size <= 0 || !handle(std::span(packet).first(static_cast<size_t>(size)))) {
            return false;
        }
    }
}

bool FrameChannel::handle(std::span<const std::byte> packet)
{
    if (FrameRelease release; kindOf(packet) == FramePacket::Release && readPacket(packet, release)) {
        // Of a former ring there is nothing to give back.
        if (m_ring && release.generation == m_ring->generation() && !m_ring->freeSlot(release.slot)) {
            return false;
        }
        if (!m_isSent) {
            // The newest picture waited for a slot. In a pause no other one would come.
            sendPicture();
        }
        return true;
    }
    FrameFormats formats;
    if (kindOf(packet) != FramePacket::Formats || !readPacket(packet, formats)) {
        return false;
    }
    m_formats = (formats.formats & static_cast<uint32_t>(FrameFormat::Bgrx)) != 0 ? formats.formats : 0;
    sendPicture();
    return true;
}

Window FrameChannels::window(const std::string &name)
{
    if (!isFrameQueue(name)) {
        return {name, nullptr};
    }
    std::erase_if(m_channels, [](const auto &entry) { return entry.second.expired(); });
    std::shared_ptr<FrameChannel> channel = m_channels[name].lock();
    if (!channel) {
        channel = std::make_shared<FrameChannel>();
        m_channels[name] = channel;
    }
    if (auto early = m_early.extract(name)) {
        channel->connect(std::move(early.mapped()));
    }
    return {name, channel};
}

void FrameChannels::connect(const std::string &name, pps::Fd socket)
{
    const auto found = m_channels.find(name);
    const auto channel = found == m_channels.end() ? nullptr : found->second.lock();
    if (channel) {
        channel->connect(std::move(socket));
    } else {
        m_early.insert_or_assign(name, std::move(socket));
    }
}

} // namespace voro::renderer
