#include "VideoWindow.h"

#include "ImageNode.h"
#include "PlanarNode.h"

#include <QtCore/QUuid>
#include <QtQuick/QQuickWindow>

#include <utility>

namespace voro::qml {

using renderer::FrameFormat;

VideoWindow::VideoWindow(QQuickItem *parent)
    : QQuickItem(parent),
      m_windowId(QStringLiteral("item-") + QUuid::createUuid().toString(QUuid::WithoutBraces)),
      m_receiver(m_windowId)
{
    setFlag(ItemHasContents);
    connect(&m_receiver, &renderer::FrameReceiver::frameChanged, this, &VideoWindow::onFrameChanged);
}

void VideoWindow::setFillMode(FillMode mode)
{
    if (mode != m_fillMode) {
        m_fillMode = mode;
        update();
        Q_EMIT fillModeChanged();
        Q_EMIT contentRectChanged();
    }
}

void VideoWindow::onFrameChanged()
{
    const std::shared_ptr<renderer::Frame> &frame = m_receiver.frame();
    const bool hadPicture = hasPicture();
    const QSize size = frame ? frame->size() : QSize();
    const QSizeF shown = frame ? frame->shownSize() : QSizeF();
    const bool isOtherSize = size != m_sourceSize;
    const bool isOtherShape = shown != m_shownSize;
    m_sourceSize = size;
    m_shownSize = shown;
    m_isNew = true;
    update();
    if (isOtherSize) {
        Q_EMIT sourceSizeChanged();
    }
    if (isOtherShape) {
        Q_EMIT contentRectChanged();
    }
    if (hasPicture() != hadPicture) {
        Q_EMIT hasPictureChanged();
    }
    Q_EMIT pictureChanged();
}

QRectF VideoWindow::contentRect() const
{
    const QRectF all = boundingRect();
    if (m_fillMode != PreserveAspectFit || m_shownSize.isEmpty()) {
        return m_shownSize.isEmpty() ? QRectF() : all;
    }
    QRectF content(QPointF(), m_shownSize.scaled(all.size(), Qt::KeepAspectRatio));
    content.moveCenter(all.center());
    return content;
}

/** The visible part of the picture. */
QRectF VideoWindow::sourceRect() const
{
    const QRectF all{QPointF(), QSizeF(m_sourceSize)};
    if (m_fillMode != PreserveAspectCrop || size().isEmpty()) {
        return all;
    }
    const QSizeF seen = size().scaled(m_shownSize, Qt::KeepAspectRatio);
    QRectF part(0, 0, seen.width() / m_shownSize.width() * all.width(),
                seen.height() / m_shownSize.height() * all.height());
    part.moveCenter(all.center());
    return part;
}

QSGNode *VideoWindow::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    const std::shared_ptr<renderer::Frame> &frame = m_receiver.frame();
    const uint32_t formats = m_sceneFormats.formatsOf(window(), m_sourceSize);
    if (std::exchange(m_formats, formats) != formats) {
        // This is the scene's thread. The receiver belongs to the item's, which waits for it now.
        QMetaObject::invokeMethod(
            this, [this] { m_receiver.setFormats(m_formats); }, Qt::QueuedConnection);
    }
    const auto format = frame ? frame->description().frame.format : FrameFormat();
    // A picture in a format that this scene cannot draw was meant for a former one. The worker sends it again.
    const bool isShown = !size().isEmpty() && (formats & static_cast<uint32_t>(format)) != 0;
    const bool isPlanar = format != FrameFormat::Bgrx;
    if (!isShown || isPlanar != m_isPlanar) {
        delete std::exchange(old, nullptr);
    }
    m_isPlanar = isPlanar;
    if (!isShown) {
        return nullptr;
    }
    const bool isNew = std::exchange(m_isNew, false) || !old;
    return isPlanar ? updatePlanes(static_cast<PlanarNode *>(old), isNew)
                    : updateImage(static_cast<ImageNode *>(old), isNew);
}

QSGNode *VideoWindow::updateImage(ImageNode *node, bool isNew)
{
    if (!node) {
        node = new ImageNode(window());
    }
    if (isNew) {
        node->setTexture(window()->createTextureFromImage(renderer::Frame::image(m_receiver.frame()),
                                                          QQuickWindow::TextureIsOpaque));
    }
    node->setRects(contentRect(), sourceRect(), window()->effectiveDevicePixelRatio());
    return node;
}

QSGNode *VideoWindow::updatePlanes(PlanarNode *node, bool isNew)
{
    if (!node) {
        node = new PlanarNode;
    }
    if (isNew) {
        node->setFrame(m_receiver.frame());
    }
    node->setRects(contentRect(), sourceRect());
    return node;
}

void VideoWindow::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, data);
}

void VideoWindow::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        update();
        Q_EMIT contentRectChanged();
    }
}

} // namespace voro::qml
