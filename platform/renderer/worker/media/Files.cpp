#include "Files.h"

#include <pps/FdPassing.h>
#include <renderer/common/FrameQueue.h>
#include <renderer/common/Protocol.h>

#include <array>

namespace voro::renderer {

std::optional<PassedFile> takeFile()
{
    std::array<std::byte, MaximumQueueName + 1> packet;
    PassedFile passed;
    const ssize_t size = pps::receivePacket(WorkerFilesSocket, packet, passed.file);
    if (size <= 0) {
        return std::nullopt;
    }
    // A name ends with a null byte.
    passed.queue.assign(reinterpret_cast<const char *>(packet.data()), static_cast<size_t>(size) - 1);
    return passed;
}

} // namespace voro::renderer
