#include "PlaneTexture.h"

#include <QtCore/QLibraryInfo>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>

#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
#include <rhi/qrhi.h>
#else
#include <QtGui/private/qrhi_p.h>
#endif

#include <bit>
#include <utility>

namespace voro::qml {

using renderer::FrameFormat;

namespace {

/** Qt keeps the interface to its textures for one minor version only. */
bool isQtAsCompiled()
{
    const QVersionNumber present = QLibraryInfo::version();
    return present.majorVersion() == QT_VERSION_MAJOR && present.minorVersion() == QT_VERSION_MINOR;
}

QRhiTexture::Format textureFormat(FrameFormat format, size_t plane)
{
    switch (format) {
    case FrameFormat::Nv12:
        return plane == 0 ? QRhiTexture::R8 : QRhiTexture::RG8;
    case FrameFormat::I420:
        return QRhiTexture::R8;
    case FrameFormat::I420Ten:
        return QRhiTexture::R16;
    case FrameFormat::P010:
        return plane == 0 ? QRhiTexture::R16 : QRhiTexture::RG16;
    case FrameFormat::Bgrx:
        break;
    }
    return QRhiTexture::UnknownFormat;
}

/** Whether a shader converts colours for less than a worker: not where a program stands in for a graphics card. */
bool isShaderWorthwhile(const QRhi *rhi)
{
    if (const QByteArray wish = qgetenv("VORO_VIDEO_SHADER"); !wish.isEmpty()) {
        return wish != "0";
    }
    const QRhiDriverInfo driver = rhi->driverInfo();
    const auto isOf = [&driver](const char *name) { return driver.deviceName.contains(name); };
    return driver.deviceType != QRhiDriverInfo::CpuDevice && !isOf("llvmpipe") && !isOf("softpipe")
           && !isOf("SwiftShader");
}

bool canTake(const QRhi *rhi, FrameFormat format)
{
    const bool isTenBits = format == FrameFormat::I420Ten || format == FrameFormat::P010;
    return (std::endian::native == std::endian::little || !isTenBits)
           && rhi->isTextureFormatSupported(textureFormat(format, 0))
           && rhi->isTextureFormatSupported(textureFormat(format, 1));
}

/** Without a device, the scene is drawn by software. */
uint32_t formatsOf(const QRhi *rhi, QSize picture)
{
    auto formats = static_cast<uint32_t>(FrameFormat::Bgrx);
    // Rows of planes are longer than the picture is wide.
    if (!rhi || !isQtAsCompiled() || !rhi->isFeatureSupported(QRhi::ImageDataStride) || !isShaderWorthwhile(rhi)) {
        return formats;
    }
    const int largest = rhi->resourceLimit(QRhi::TextureSizeMax);
    if (picture.width() <= largest && picture.height() <= largest) {
        for (const auto format : {FrameFormat::I420, FrameFormat::Nv12, FrameFormat::I420Ten, FrameFormat::P010}) {
            formats |= canTake(rhi, format) ? static_cast<uint32_t>(format) : 0;
        }
    }
    return formats;
}

} // namespace

uint32_t SceneFormats::formatsOf(QQuickWindow *window, QSize picture)
{
    const auto *rhi =
        static_cast<const QRhi *>(window->rendererInterface()->getResource(window, QSGRendererInterface::RhiResource));
    if (rhi != m_rhi || picture != m_picture) {
        m_rhi = rhi;
        m_picture = picture;
        m_formats = qml::formatsOf(rhi, picture);
    }
    return m_formats;
}

PlaneTexture::PlaneTexture(FrameFormat format, size_t plane) : m_format(format), m_plane(plane)
{
    setFiltering(Linear);
}

PlaneTexture::~PlaneTexture()
{
    if (m_texture) {
        m_texture->deleteLater();
    }
}

void PlaneTexture::setFrame(std::shared_ptr<renderer::Frame> frame)
{
    const renderer::PlaneShape shape = renderer::planesOf(m_format)[m_plane];
    const auto side = [shape](int pictureSide) {
        return static_cast<int>(shape.side(static_cast<uint32_t>(pictureSide)));
    };
    m_size = {side(frame->size().width()), side(frame->size().height())};
    m_frame = std::move(frame);
    m_isNew = true;
}

qint64 PlaneTexture::comparisonKey() const
{
    return static_cast<qint64>(reinterpret_cast<quintptr>(this));
}

void PlaneTexture::commitTextureOperations(QRhi *rhi, QRhiResourceUpdateBatch *updates)
{
    if (!m_isNew) {
        return;
    }
    m_isNew = false;
    if (!m_texture) {
        m_texture = rhi->newTexture(textureFormat(m_format, m_plane), m_size);
        if (!m_texture->create()) {
            // The graphics card has no room for it: the scene shows nothing there.
            delete std::exchange(m_texture, nullptr);
            return;
        }
    }
    const auto stride = m_frame->description().plane(m_plane).stride;
    // Not copied here: Qt reads the worker's memory until the frame has been drawn, and m_frame holds it so long.
    QRhiTextureSubresourceUploadDescription upload(QByteArray::fromRawData(
        reinterpret_cast<const char *>(m_frame->plane(m_plane)), static_cast<qsizetype>(stride) * m_size.height()));
    upload.setDataStride(stride);
    updates->uploadTexture(m_texture, QRhiTextureUploadEntry(0, 0, upload));
}

} // namespace voro::qml
