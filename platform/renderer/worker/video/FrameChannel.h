#pragma once

#include "FrameRingWriter.h"

#include <pps/Fd.h>
#include <renderer/worker/gst/Gst.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace voro::renderer {

/**
 * The worker's end of a frame queue: gives pictures to the item at its other end. While there is none or all slots are
 * with the item only the newest picture is kept. Streaming threads show, the main loop does the rest.
 */
class FrameChannel {
public:
    FrameChannel() = default;
    ~FrameChannel();
    FrameChannel(const FrameChannel &) = delete;
    FrameChannel &operator=(const FrameChannel &) = delete;

    /** An item is there, instead of a former one. */
    void connect(pps::Fd socket);
    /** Shows a picture, and keeps it for an item that is yet to come. */
    void show(GstBuffer *picture, const GstVideoInfo &info);
    /** Shows nothing any more. */
    void clear();

private:
    static gboolean onReadable(gint fd, GIOCondition condition, gpointer self);
    bool readAll();
    bool handle(std::span<const std::byte> packet);
    void sendPicture();
    bool sendFrame(uint32_t slot);
    bool renewRing();
    void disconnect();

    std::mutex m_mutex;
    pps::Fd m_socket;
    MainLoopSource m_source;
    /** What the item can show; 0 before it has said that. */
    uint32_t m_formats = 0;
    std::unique_ptr<FrameRingWriter> m_ring;
    uint32_t m_generation = 0;
    uint64_t m_serial = 0;
    /** The newest one, and whether the item has it. */
    Owned<GstBuffer> m_picture;
    bool m_isSent = false;
    GstVideoInfo m_info{};
};

/** Where pictures are drawn: a window of the screen, or a frame queue. */
struct Window {
    std::string name;
    /** Null for what is no frame queue. */
    std::shared_ptr<FrameChannel> frames;

    bool operator==(const Window &) const = default;
};

/** The frame queues of this worker's outputs. A socket may come before the output that it is for, or after it. */
class FrameChannels {
public:
    Window window(const std::string &name);
    void connect(const std::string &name, pps::Fd socket);

private:
    /** A channel lives as long as something shows in it. */
    std::map<std::string, std::weak_ptr<FrameChannel>> m_channels;
    std::map<std::string, pps::Fd> m_early;
};

} // namespace voro::renderer
