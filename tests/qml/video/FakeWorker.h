#pragma once

#include <QtCore/QString>

#include <fcntl.h>
#include <pps/FdPassing.h>
#include <renderer/common/FrameQueue.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <string>

/** A daemon and a worker that say what the test wants. */
class FakeWorker {
public:
    explicit FakeWorker(const QString &folder)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = folder.toStdString() + "/frames.sock";
        path.copy(address.sun_path, path.size());
        m_listener.reset(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
        if (bind(m_listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
            || listen(m_listener.get(), 4) != 0) {
            qFatal("no socket");
        }
    }
    /** Accepts the item and hands it the other end of our socket. */
    void meet()
    {
        m_item.reset(accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
        int ends[2];
        if (!m_item.isValid() || socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
            qFatal("no item");
        }
        m_worker.reset(ends[0]);
        const voro::pps::Fd theirs(ends[1]);
        constexpr std::byte Note{};
        voro::pps::sendPacket(m_item.get(), std::span(&Note, 1), theirs.get());
    }
    bool say(std::span<const std::byte> packet, int file = -1) const
    {
        return voro::pps::sendPacket(m_worker.get(), packet, file);
    }
    /** Whether the item has closed its end. */
    bool isLeft() const
    {
        std::array<std::byte, 64> packet;
        voro::pps::Fd file;
        ssize_t size;
        do {
            size = voro::pps::receivePacket(m_worker.get(), packet, file);
        } while (size > 0);
        return size == 0 || errno == ECONNRESET;
    }

    /** The formats that the item has said last; nothing when it has said nothing since. */
    std::optional<uint32_t> formats() const
    {
        std::optional<uint32_t> said;
        std::array<std::byte, 64> packet;
        voro::pps::Fd file;
        for (ssize_t size = 0; (size = voro::pps::receivePacket(m_worker.get(), packet, file)) > 0;) {
            voro::renderer::FrameFormats formats;
            // What comes otherwise has another size.
            if (readPacket(std::span(packet).first(static_cast<size_t>(size)), formats)) {
                said = formats.formats;
            }
        }
        return said;
    }

private:
    voro::pps::Fd m_listener;
    voro::pps::Fd m_item;
    voro::pps::Fd m_worker;
};

inline voro::pps::Fd memoryFile(off_t size, unsigned seals)
{
    voro::pps::Fd file(memfd_create("lie", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (ftruncate(file.get(), size) != 0 || fcntl(file.get(), F_ADD_SEALS, seals) != 0) {
        qFatal("no memory");
    }
    return file;
}

/** Pictures in Bgrx. */
inline voro::renderer::FrameDescription description(uint32_t width, uint32_t height)
{
    voro::renderer::FrameDescription result;
    result.generation = 1;
    result.width = width;
    result.height = height;
    result.slots = voro::renderer::FewestFrameSlots;
    result.offset = voro::renderer::FrameHeaderSize;
    result.stride = width * 4;
    result.slotSize = voro::renderer::FrameHeaderSize + width * height * 4;
    return result;
}
