#pragma once

#include <QtQuick/QSGTexture>

#include <renderer/frames/FrameReceiver.h>

#include <memory>

class QQuickWindow;
class QRhi;
class QRhiTexture;

namespace voro::qml {

/** Asks scenes for the formats that they can draw, and keeps the last answer: the question comes for every picture. */
class SceneFormats {
public:
    /** The formats in which a window's scene wants pictures of that size: bits of FrameFormat. */
    uint32_t formatsOf(QQuickWindow *window, QSize picture);

private:
    const QRhi *m_rhi = nullptr;
    QSize m_picture;
    uint32_t m_formats = static_cast<uint32_t>(renderer::FrameFormat::Bgrx);
};

/**
 * A plane of pictures, which have all the same size, in a texture. Uploads each picture from the worker's memory, which
 * it holds until the next one.
 */
class PlaneTexture : public QSGTexture {
    Q_OBJECT
public:
    PlaneTexture(renderer::FrameFormat format, size_t plane);
    ~PlaneTexture() override;

    void setFrame(std::shared_ptr<renderer::Frame> frame);

    qint64 comparisonKey() const override;
    QRhiTexture *rhiTexture() const override { return m_texture; }
    QSize textureSize() const override { return m_size; }
    bool hasAlphaChannel() const override { return false; }
    bool hasMipmaps() const override { return false; }
    void commitTextureOperations(QRhi *rhi, QRhiResourceUpdateBatch *updates) override;

private:
    const renderer::FrameFormat m_format;
    const size_t m_plane;
    std::shared_ptr<renderer::Frame> m_frame;
    bool m_isNew = false;
    QSize m_size;
    QRhiTexture *m_texture = nullptr;
};

} // namespace voro::qml
