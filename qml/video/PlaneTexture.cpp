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

namespace voro::qml {

using renderer::FrameFormat;

namespace {

/** Qt keeps the interface to its textures for one minor version only. */
bool isQtAsCompiled()
{
    const QVersionNumber present = QLibraryInfo::version();
    return present.majorVersion() == QT_VERSION_MAJOR && present.minorVersion() == QT_VERSION_MINOR;
}

QRhiTexture::Format textureFormat(bool isTenBits, bool isPair)
{
    if (isTenBits) {
        return isPair ? QRhiTexture::RG16 : QRhiTexture::R16;
    }
    return isPair ? QRhiTexture::RG8 : QRhiTexture::R8;
}

} // namespace

uint32_t formatsOf(QQuickWindow *window, QSize picture)
{
    auto formats = static_cast<uint32_t>(FrameFormat::Bgrx);
    auto *rhi =
        static_cast<QRhi *>(window->rendererInterface()->getResource(window, QSGRendererInterface::RhiResource));
    if (!rhi || !isQtAsCompiled()) {
        return formats;
    }
    const int largest = rhi->resourceLimit(QRhi::TextureSizeMax);
    if (picture.width() > largest || picture.height() > largest) {
        return formats;
    }
    const auto add = [&formats, rhi](bool isTenBits, FrameFormat single, FrameFormat pair) {
        if (rhi->isTextureFormatSupported(textureFormat(isTenBits, false))) {
            formats |= static_cast<uint32_t>(single);
            if (rhi->isTextureFormatSupported(textureFormat(isTenBits, true))) {
                formats |= static_cast<uint32_t>(pair);
            }
        }
    };
    add(false, FrameFormat::I420, FrameFormat::Nv12);
    if (std::endian::native == std::endian::little) {
        add(true, FrameFormat::I420Ten, FrameFormat::P010);
    }
    return formats;
}

PlaneTexture::PlaneTexture(FrameFormat format, size_t plane)
    : m_shape(renderer::planesOf(format)[plane]),
      m_isTenBits(format == FrameFormat::I420Ten || format == FrameFormat::P010),
      m_plane(plane)
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
    const auto side = [this](int pictureSide) {
        return static_cast<int>(m_shape.side(static_cast<uint32_t>(pictureSide)));
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
        const bool isPair = m_shape.pixelBytes == (m_isTenBits ? 4U : 2U);
        m_texture = rhi->newTexture(textureFormat(m_isTenBits, isPair), m_size);
        m_texture->create();
    }
    const auto stride = m_frame->description().plane(m_plane).stride;
    // The graphics card reads the worker's memory itself, while the frame is drawn.
    QRhiTextureSubresourceUploadDescription upload(QByteArray::fromRawData(
        reinterpret_cast<const char *>(m_frame->plane(m_plane)), static_cast<qsizetype>(stride) * m_size.height()));
    upload.setDataStride(stride);
    updates->uploadTexture(m_texture, QRhiTextureUploadEntry(0, 0, upload));
}

} // namespace voro::qml
