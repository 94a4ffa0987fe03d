#include "ScreenAttach.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <X11/Xlib-xcb.h>
// It needs the former.
#include <X11/extensions/XShm.h>
#include <xcb/shm.h>

#include <cstdlib>
#include <memory>

namespace {

struct Free {
    void operator()(void *reply) const { std::free(reply); }
};

/** Only such a socket can carry a descriptor. */
bool isOnThisMachine(xcb_connection_t *connection)
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    auto *name = reinterpret_cast<sockaddr *>(&address);
    return getpeername(xcb_get_file_descriptor(connection), name, &size) == 0 && address.ss_family == AF_UNIX;
}

bool takesDescriptors(xcb_connection_t *connection)
{
    const std::unique_ptr<xcb_shm_query_version_reply_t, Free> version(
        xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr));
    return version && (version->major_version > 1 || (version->major_version == 1 && version->minor_version >= 2));
}

} // namespace

extern "C" __attribute__((visibility("default"))) int voroAttachToScreen(void *display, void *segment)
{
    auto *info = static_cast<XShmSegmentInfo *>(segment);
    xcb_connection_t *connection = XGetXCBConnection(static_cast<Display *>(display));
    if (!isOnThisMachine(connection) || !takesDescriptors(connection)) {
        return 0;
    }
    const int file = fcntl(info->shmid, F_DUPFD_CLOEXEC, 0);
    if (file < 0) {
        return 0;
    }
    info->shmseg = xcb_generate_id(connection);
    // It closes the descriptor.
    xcb_shm_attach_fd(connection, static_cast<xcb_shm_seg_t>(info->shmseg), file, info->readOnly ? 1 : 0);
    return 1;
}
