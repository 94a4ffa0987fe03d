#pragma once

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>
#include <QtGui/QImage>

#include <pps/Fd.h>
#include <renderer/common/FrameQueue.h>

#include <memory>
#include <span>

namespace voro::renderer {

/** A worker's memory file with pictures, mapped for reading. */
class FrameRingReader {
public:
    /** Null when the file does not match the description or could shrink. */
    static std::shared_ptr<FrameRingReader> map(const PlanarDescription &description, int file);
    ~FrameRingReader();
    FrameRingReader(const FrameRingReader &) = delete;
    FrameRingReader &operator=(const FrameRingReader &) = delete;

    const PlanarDescription &description() const { return m_description; }
    const std::byte *slot(uint32_t slot) const { return m_memory + slot * m_description.frame.slotSize; }

private:
    FrameRingReader() = default;

    PlanarDescription m_description;
    const std::byte *m_memory = nullptr;
    size_t m_size = 0;
};

/**
 * One picture in the memory of a worker. Its destruction, in any thread, gives the slot back to the worker.
 */
class Frame {
public:
    Frame(std::shared_ptr<pps::Fd> socket, std::shared_ptr<FrameRingReader> ring, uint32_t slot)
        : m_socket(std::move(socket)),
          m_ring(std::move(ring)),
          m_slot(slot)
    {}
    ~Frame();
    Frame(const Frame &) = delete;
    Frame &operator=(const Frame &) = delete;

    /** The number that the worker wrote with the picture. */
    uint64_t serial() const;
    QSize size() const;
    /** The size in square pixels. */
    QSizeF shownSize() const;
    const PlanarDescription &description() const { return m_ring->description(); }
    /** The first byte of a plane. The worker may write to it at any time, whatever it has promised. */
    const std::byte *plane(size_t index) const { return m_ring->slot(m_slot) + description().plane(index).offset; }
    /** A picture in Bgrx without a copy. The frame lives as long as the image and its copies. */
    static QImage image(const std::shared_ptr<Frame> &frame);

private:
    std::shared_ptr<pps::Fd> m_socket;
    std::shared_ptr<FrameRingReader> m_ring;
    uint32_t m_slot;
};

/** The item's end of a frame queue. Connects to the daemon, which passes the socket of each worker that draws. */
class FrameReceiver : public QObject {
    Q_OBJECT
public:
    explicit FrameReceiver(const QString &name, QObject *parent = nullptr);

    /** What can be shown, as bits of FrameFormat. Only Bgrx at first, which always has to be among it. */
    void setFormats(uint32_t formats);

    /** The newest picture, which may still be of a format of earlier; null without one. */
    const std::shared_ptr<Frame> &frame() const { return m_frame; }

Q_SIGNALS:
    /** A new picture arrived, or the last one is gone. */
    void frameChanged();

private:
    /** A socket and its notifier. */
    struct Watched {
        std::shared_ptr<pps::Fd> socket;
        std::unique_ptr<QSocketNotifier> ready;

        void set(pps::Fd descriptor, const std::function<void()> &onReady);
        void reset();
    };

    void connectToDaemon();
    void readDaemon();
    void readWorker();
    void sendFormats();
    void dropWorker();
    /** False for an invalid message. */
    bool handle(std::span<const std::byte> packet, const pps::Fd &file);
    bool take(const FrameReady &ready);
    void show(std::shared_ptr<Frame> frame);

    const QByteArray m_name;
    QString m_folder;
    /** Watches the daemon's folder while there is no daemon. */
    QFileSystemWatcher m_watcher;
    Watched m_daemon;
    /** Creation time of the socket of the last connection: seconds and nanoseconds. */
    std::pair<time_t, long> m_tried;
    Watched m_worker;
    uint32_t m_formats = static_cast<uint32_t>(FrameFormat::Bgrx);
    std::shared_ptr<FrameRingReader> m_ring;
    std::shared_ptr<Frame> m_frame;
};

} // namespace voro::renderer
