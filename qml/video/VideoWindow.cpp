#include "VideoWindow.h"

#include <QtCore/QUuid>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

namespace voro::qml {

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
    auto *node = static_cast<QSGImageNode *>(old);
    const std::shared_ptr<renderer::Frame> &frame = m_receiver.frame();
    if (!frame || size().isEmpty()) {
        delete node;
        m_isNew = true;
        return nullptr;
    }
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
    }
    if (m_isNew || !node->texture()) {
        node->setTexture(
            window()->createTextureFromImage(renderer::Frame::image(frame), QQuickWindow::TextureIsOpaque));
        m_isNew = false;
    }
    node->setRect(contentRect());
    node->setSourceRect(sourceRect());
    return node;
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
