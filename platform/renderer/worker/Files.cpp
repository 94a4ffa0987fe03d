#include "Files.h"

#include <renderer/common/Protocol.h>
#include <sys/socket.h>

#include <cstring>

namespace voro::renderer {

pps::Fd takeFile()
{
    pps::Fd file;
    for (;;) {
        char byte = 0;
        iovec data{&byte, sizeof byte};
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))]{};
        msghdr message{};
        message.msg_iov = &data;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        if (recvmsg(WorkerFilesSocket, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC) <= 0) {
            return file;
        }
        const cmsghdr *header = CMSG_FIRSTHDR(&message);
        if (header && header->cmsg_level == SOL_SOCKET && header->cmsg_type == SCM_RIGHTS) {
            int descriptor = -1;
            std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
            file.reset(descriptor);
        }
    }
}

} // namespace voro::renderer
