#include "FdPassing.h"

#include <sys/socket.h>

#include <cerrno>
#include <cstring>

namespace voro::pps {

bool sendPacket(int socket, std::span<const std::byte> packet, int descriptor)
{
    iovec data{const_cast<std::byte *>(packet.data()), packet.size()};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof descriptor)]{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    if (descriptor >= 0) {
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        cmsghdr *header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof descriptor);
        std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
    }
    ssize_t size;
    do {
        size = sendmsg(socket, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    } while (size < 0 && errno == EINTR);
    return size == static_cast<ssize_t>(packet.size());
}

ssize_t receivePacket(int socket, std::span<std::byte> buffer, Fd &descriptor)
{
    iovec data{buffer.data(), buffer.size()};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))]{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control;
    // Without the padding, in which a second one would have room: the kernel closes what does not fit.
    message.msg_controllen = CMSG_LEN(sizeof(int));
    ssize_t size;
    do {
        size = recvmsg(socket, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    } while (size < 0 && errno == EINTR);
    descriptor.reset();
    const cmsghdr *header = size >= 0 ? CMSG_FIRSTHDR(&message) : nullptr;
    if (header && header->cmsg_level == SOL_SOCKET && header->cmsg_type == SCM_RIGHTS) {
        int passed = -1;
        std::memcpy(&passed, CMSG_DATA(header), sizeof passed);
        descriptor.reset(passed);
    }
    return size;
}

} // namespace voro::pps
