#include "FrameReceiver.h"

#include <QtCore/QFile>

#include <fcntl.h>
#include <pps/FdPassing.h>
#include <pps/Runtime.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <utility>

namespace voro::renderer {

using pps::Fd;

std::shared_ptr<FrameRingReader> FrameRingReader::map(const PlanarDescription &description, int file)
{
    struct stat status {};
    const int seals = fcntl(file, F_GET_SEALS);
    const bool canShrink = seals < 0 || (seals & F_SEAL_SHRINK) == 0;
    if (canShrink || fstat(file, &status) != 0 || !isValid(description, static_cast<uint64_t>(status.st_size))) {
        return nullptr;
    }
    const auto size = static_cast<size_t>(status.st_size);
    void *memory = mmap(nullptr, size, PROT_READ, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED) {
        return nullptr;
    }
    std::shared_ptr<FrameRingReader> ring(new FrameRingReader);
    ring->m_description = description;
    ring->m_memory = static_cast<const std::byte *>(memory);
    ring->m_size = size;
    return ring;
}

FrameRingReader::~FrameRingReader()
{
    munmap(const_cast<std::byte *>(m_memory), m_size);
}

Frame::~Frame()
{
    FrameRelease release;
    release.generation = description().frame.generation;
    release.slot = m_slot;
    // A worker that is gone needs no slot back.
    pps::sendPacket(m_socket->get(), bytesOf(release));
}

uint64_t Frame::serial() const
{
    return reinterpret_cast<const FrameHeader *>(m_ring->slot(m_slot))->serial;
}

QSize Frame::size() const
{
    return {static_cast<int>(description().frame.width), static_cast<int>(description().frame.height)};
}

QSizeF Frame::shownSize() const
{
    const FrameDescription &frame = description().frame;
    return {static_cast<qreal>(frame.width) * frame.pixelWidth / frame.pixelHeight, static_cast<qreal>(frame.height)};
}

QImage Frame::image(const std::shared_ptr<Frame> &frame)
{
    return QImage(
        reinterpret_cast<const uchar *>(frame->plane(0)), frame->size().width(), frame->size().height(),
        static_cast<qsizetype>(frame->description().frame.stride), QImage::Format_RGB32,
        [](void *held) { delete static_cast<std::shared_ptr<Frame> *>(held); }, new std::shared_ptr<Frame>(frame));
}

void FrameReceiver::Watched::set(Fd descriptor, const std::function<void()> &onReady)
{
    reset();
    socket = std::make_shared<Fd>(std::move(descriptor));
    ready = std::make_unique<QSocketNotifier>(socket->get(), QSocketNotifier::Read);
    QObject::connect(ready.get(), &QSocketNotifier::activated, ready.get(), onReady);
}

void FrameReceiver::Watched::reset()
{
    if (ready) {
        ready->setEnabled(false);
        // The caller may be the notifier.
        ready.release()->deleteLater();
    }
    socket.reset();
}

FrameReceiver::FrameReceiver(const QString &name, QObject *parent) : QObject(parent), m_name(name.toUtf8())
{
    std::string folder;
    if (const int error = pps::runtimeFolder(folder)) {
        qWarning("VideoWindow: there is no runtime folder: %s", strerror(error));
        return;
    }
    m_folder = QString::fromStdString(folder);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FrameReceiver::connectToDaemon);
    // Watch first, so that a daemon that starts now is not missed.
    m_watcher.addPath(m_folder);
    connectToDaemon();
}

void FrameReceiver::connectToDaemon()
{
    const std::string path = m_folder.toStdString() + '/' + std::string(FrameSocketName);
    struct stat status {};
    if (m_daemon.socket || stat(path.c_str(), &status) != 0) {
        return;
    }
    // Do not retry with a daemon that refused us or left a stale socket: it would happen again.
    const auto made = std::pair(status.st_ctim.tv_sec, status.st_ctim.tv_nsec);
    if (std::exchange(m_tried, made) == made) {
        return;
    }
    Fd socket = pps::connectToSocket(path);
    const auto name = std::as_bytes(std::span(m_name.constData(), static_cast<size_t>(m_name.size())));
    if (socket.isValid() && pps::sendPacket(socket.get(), name)) {
        m_daemon.set(std::move(socket), [this] { readDaemon(); });
    }
}

void FrameReceiver::readDaemon()
{
    std::byte note{};
    Fd worker;
    const ssize_t size = pps::receivePacket(m_daemon.socket->get(), std::span(&note, 1), worker);
    if (size < 0 && errno == EAGAIN) {
        return;
    }
    if (size <= 0) {
        // The next daemon makes a new socket, which changes the folder, unless it has done so already.
        m_daemon.reset();
        connectToDaemon();
        return;
    }
    if (worker.isValid()) {
        m_worker.set(std::move(worker), [this] { readWorker(); });
        m_ring.reset();
        sendFormats();
    }
}

void FrameReceiver::setFormats(uint32_t formats)
{
    if (std::exchange(m_formats, formats) != formats && m_worker.socket) {
        sendFormats();
    }
}

void FrameReceiver::sendFormats()
{
    FrameFormats formats;
    formats.formats = m_formats;
    if (!pps::sendPacket(m_worker.socket->get(), bytesOf(formats))) {
        dropWorker();
    }
}

void FrameReceiver::dropWorker()
{
    m_worker.reset();
    m_ring.reset();
    show(nullptr);
}

void FrameReceiver::readWorker()
{
    // Other events of the application must not wait for a worker that never stops.
    constexpr int MostAtOnce = 16;
    for (int i = 0; i < MostAtOnce; ++i) {
        std::array<std::byte, MaximumFramePacket> packet;
        Fd file;
        const ssize_t size = pps::receivePacket(m_worker.socket->get(), packet, file);
        if (size < 0 && errno == EAGAIN) {
            return;
        }
        if (size <= 0 || !handle(std::span(packet).first(static_cast<size_t>(size)), file)) {
            dropWorker();
            return;
        }
    }
}

bool FrameReceiver::handle(std::span<const std::byte> packet, const Fd &file)
{
    PlanarDescription description;
    FrameReady ready;
    switch (kindOf(packet)) {
    case FramePacket::Description:
        m_ring = readPacket(packet, description.frame) ? FrameRingReader::map(description, file.get()) : nullptr;
        return m_ring != nullptr;
    case FramePacket::PlanarDescription:
        m_ring = readPacket(packet, description) ? FrameRingReader::map(description, file.get()) : nullptr;
        return m_ring != nullptr;
    case FramePacket::Frame:
        return readPacket(packet, ready) && take(ready);
    case FramePacket::Clear:
        show(nullptr);
        return true;
    default:
        return false;
    }
}

bool FrameReceiver::take(const FrameReady &ready)
{
    if (!m_ring || ready.generation != m_ring->description().frame.generation
        || ready.slot >= m_ring->description().frame.slots) {
        return false;
    }
    auto frame = std::make_shared<Frame>(m_worker.socket, m_ring, ready.slot);
    // Drop a picture that was overwritten meanwhile.
    if (frame->serial() == ready.serial) {
        show(std::move(frame));
    }
    return true;
}

void FrameReceiver::show(std::shared_ptr<Frame> frame)
{
    m_frame = std::move(frame);
    Q_EMIT frameChanged();
}

} // namespace voro::renderer
