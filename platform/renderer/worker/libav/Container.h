#pragma once

extern "C" {
#include <libavformat/avformat.h>
}

#include <renderer/common/LocalFile.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace voro::renderer {

struct FreePacket {
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
};
using Packet = std::unique_ptr<AVPacket, FreePacket>;

/** A media file that libavformat reads. It opens no other file, whatever the file says. Times are microseconds. */
class Container {
public:
    Container() = default;
    ~Container();
    Container(const Container &) = delete;
    Container &operator=(const Container &) = delete;

    /** False, with the reason in problem(), for what is no medium. */
    bool open(const std::string &path, LocalFile::Shared file);
    const std::string &problem() const { return m_problem; }
    /** Ends whatever another thread is reading. */
    void interrupt() { m_isInterrupted = true; }

    /** The stream of a kind to play, null without one. Only streams that were asked for are read. */
    AVStream *select(AVMediaType kind);
    AVFormatContext &context() const { return *m_context; }
    /** Null at the end. */
    Packet read();
    /** Goes to a time of the file, or before it; tells what is read next when the packets themselves do not. */
    std::optional<int64_t> seek(int64_t time);

    /** The time of the file at which it begins. */
    int64_t start() const;
    /** 0 when the file does not say. */
    int64_t duration() const;
    /** Counts the packets of the file, from where it is read. */
    int64_t measure();

private:
    static int onRead(void *self, uint8_t *buffer, int size);
    static int64_t onSeek(void *self, int64_t offset, int whence);

    std::string m_problem;
    LocalFile::Shared m_file;
    /** Where libavformat reads on. */
    int64_t m_place = 0;
    AVIOContext *m_input = nullptr;
    AVFormatContext *m_context = nullptr;
    std::atomic<bool> m_isInterrupted = false;
};

} // namespace voro::renderer
