#include "FdPassing.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace voro::pps {

void refuseDescriptors(int socket)
{
    // SO_PASSRIGHTS, which older headers lack.
    constexpr int PassRights = 83;
    constexpr int No = 0;
    setsockopt(socket, SOL_SOCKET, PassRights, &No, sizeof No);
}

bool sendPacket(int socket, std::span<const std::byte> packet, std::span<const int> descriptors)
{
    iovec data{const_cast<std::byte *>(packet.data()), packet.size()};
    alignas(cmsghdr) char control[CMSG_SPACE(MostPassed * sizeof(int))]{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    if (!descriptors.empty()) {
        message.msg_control = control;
        message.msg_controllen = CMSG_SPACE(descriptors.size_bytes());
        cmsghdr *header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(descriptors.size_bytes());
        std::memcpy(CMSG_DATA(header), descriptors.data(), descriptors.size_bytes());
    }
    ssize_t size;
    do {
        size = sendmsg(socket, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    } while (size < 0 && errno == EINTR);
    return size == static_cast<ssize_t>(packet.size());
}

bool sendPacket(int socket, std::span<const std::byte> packet, int descriptor)
{
    return sendPacket(socket, packet, std::span<const int>(&descriptor, descriptor >= 0 ? 1 : 0));
}

ssize_t receivePacket(int socket, std::span<std::byte> buffer, std::span<Fd> descriptors)
{
    iovec data{buffer.data(), buffer.size()};
    alignas(cmsghdr) char control[CMSG_SPACE(MostPassed * sizeof(int))]{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control;
    // Without the padding, in which a further one would have room: the kernel closes what does not fit.
    message.msg_controllen = CMSG_LEN(descriptors.size() * sizeof(int));
    ssize_t size;
    do {
        size = recvmsg(socket, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    } while (size < 0 && errno == EINTR);
    std::ranges::for_each(descriptors, [](Fd &descriptor) { descriptor.reset(); });
    const cmsghdr *header = size >= 0 ? CMSG_FIRSTHDR(&message) : nullptr;
    if (header && header->cmsg_level == SOL_SOCKET && header->cmsg_type == SCM_RIGHTS) {
        const size_t count = (header->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        int passed[MostPassed];
        std::memcpy(passed, CMSG_DATA(header), count * sizeof(int));
        for (size_t i = 0; i < count; ++i) {
            descriptors[i].reset(passed[i]);
        }
    }
    return size;
}

ssize_t receivePacket(int socket, std::span<std::byte> buffer, Fd &descriptor)
{
    return receivePacket(socket, buffer, std::span(&descriptor, 1));
}

} // namespace voro::pps
